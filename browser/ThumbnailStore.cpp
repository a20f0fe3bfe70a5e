#include "browser/ThumbnailStore.h"

#include <QtConcurrent>

namespace velmor {

namespace {

QString keyOf(const QUrl &url, int revision)
{
    return url.path() + u'#' + QString::number(revision);
}

} // namespace

ThumbnailStore::ThumbnailStore(QObject *parent) : QObject(parent), m_kept(capacity)
{
    // Files are read and taken apart beside the drawing, which is one thread's for all.
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
    m_kept.insert(keyOf(url, revision), new Thumbnail(thumbnail), thumbnail.image.sizeInBytes());
}

QFuture<std::optional<Thumbnail>> ThumbnailStore::draw(const QUrl &url, double width)
{
    return QtConcurrent::task([url, width](QPromise<std::optional<Thumbnail>> &promise) {
               if (!promise.isCanceled())
                   promise.addResult(renderThumbnail(url, width));
           })
        .onThreadPool(m_pool)
        .withPriority(++m_asked)
        .spawn();
}

} // namespace velmor
