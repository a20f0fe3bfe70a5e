#pragma once

#include "browser/Thumbnail.h"

#include <QCache>
#include <QFuture>
#include <QObject>
#include <QThreadPool>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <atomic>
#include <memory>
#include <optional>

namespace velmor {

/// Makes the thumbnails of one screen in the background, from the top as they are asked for, and
/// keeps as many as fit into its memory, so that what comes into view again is there at once. A
/// page that can't be drawn has one without an image, and isn't tried again until the file changes.
/// Main thread.
class ThumbnailStore : public QObject {
    Q_OBJECT
    QML_ELEMENT

public:
    /// The most that kept pictures take, in bytes; one takes about a million.
    static constexpr qsizetype capacity = 96'000'000;

    explicit ThumbnailStore(QObject *parent = nullptr);
    /// Waits for what is being drawn; what hasn't begun is dropped.
    ~ThumbnailStore() override;

    /// The thumbnail of a file's content, if it is kept.
    [[nodiscard]] std::optional<Thumbnail> kept(const QUrl &url, int revision) const;
    void keep(const QUrl &url, int revision, const Thumbnail &thumbnail);
    /// True once a drawing isn't wanted any more.
    using Dropped = std::shared_ptr<std::atomic_bool>;

    /// Draws one. If it is dropped before its turn there is none, and no time goes into it.
    [[nodiscard]] QFuture<std::optional<Thumbnail>> draw(const QUrl &url, double width,
                                                         const Dropped &dropped);
    /// How many drawings were asked for.
    [[nodiscard]] int asked() const { return m_asked; }

private:
    QCache<QString, Thumbnail> m_kept;
    QThreadPool m_pool;
    int m_asked = 0;
};

} // namespace velmor
