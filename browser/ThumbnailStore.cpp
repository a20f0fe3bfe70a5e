#include "browser/ThumbnailStore.h"

#include "preview/Background.h"

#include <algorithm>

namespace velmor {

namespace {

QString keyOf(const QUrl &url, int revision)
{
    return url.path() + u'#' + QString::number(revision);
}

} // namespace

ThumbnailStore::ThumbnailStore(QObject *parent) : QObject(parent), m_kept(capacity)
{
    // While one file is drawn, which is one process's work for all, the next is taken apart.
    m_pool.setMaxThreadCount(2);
    m_pool.setThreadPriority(QThread::LowPriority);
}

ThumbnailStore::~ThumbnailStore()
{
    m_pool.clear();
    m_pool.waitForDone();
}

std::optional<Thumbnail> ThumbnailStore::kept(const QUrl &url, int revision) const
{
    const Thumbnail *thumbnail = m_kept.object(keyOf(url, revision));
    return thumbnail ? std::optional(*thumbnail) : std::nullopt;
}

void ThumbnailStore::keep(const QUrl &url, int revision, const Thumbnail &thumbnail)
{
    const qsizetype cost = std::max<qsizetype>(thumbnail.image.sizeInBytes(), 1);
    m_kept.insert(keyOf(url, revision), new Thumbnail(thumbnail), cost);
}

QFuture<std::optional<Thumbnail>> ThumbnailStore::draw(const QUrl &url, double width,
                                                       const Dropped &dropped)
{
    ++m_asked;
    return runIn(m_pool, 0, [url, width, dropped] {
        return *dropped ? std::nullopt
                        : std::optional(renderThumbnail(url, width).value_or(Thumbnail()));
    });
}

} // namespace velmor
