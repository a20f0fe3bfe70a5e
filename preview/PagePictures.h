#pragma once

#include "preview/PreviewDocument.h"

#include <QCache>
#include <QObject>

namespace velmor {

/// A drawn picture and what was asked for.
struct PagePicture {
    PictureRequest request;
    QImage image; ///< Null if the page can't be drawn.
};

/// The pictures of a document's pages that a view shows: made in the background, kept as long as
/// memory allows. Main thread.
///
/// At most one picture is being drawn at a time, always the one that is most urgent by then, so
/// what has scrolled away is never drawn. For each page there is one picture of the whole and one
/// of a part; an outdated one stays until its successor is there.
class PagePictures : public QObject {
    Q_OBJECT

public:
    /// Which of the wanted pictures are made: only of what has none yet, so that a zoom in
    /// progress isn't held up by what it passes, or all.
    enum class Sharpness { anyPicture, asWanted };

    using QObject::QObject;

    /// Forgets all pictures.
    void setDocument(const std::shared_ptr<PreviewDocument> &document);

    /// How many bytes of pictures are kept, those used last first. 128 MiB unless set.
    void setBudget(qint64 bytes);

    /// Has these made, the first first, and nothing else.
    void want(const QList<PictureRequest> &requests, Sharpness sharpness);

    /// The newest picture, or null. Valid until the event loop runs again.
    [[nodiscard]] const PagePicture *picture(int page, PictureExtent extent);

    /// Bytes of all pictures that are kept.
    [[nodiscard]] qint64 bytes() const { return m_pictures.totalCost(); }

    /// Whether one is being drawn.
    [[nodiscard]] bool isBusy() const { return m_busy; }

Q_SIGNALS:
    /// There is a new picture of a page.
    void arrived(int page);

private:
    using Key = std::pair<int, PictureExtent>;

    [[nodiscard]] bool isMissing(const PictureRequest &request);
    void makeNext();
    void take(const PictureRequest &request, const QImage &image);

    std::shared_ptr<PreviewDocument> m_document;
    QCache<Key, PagePicture> m_pictures{qsizetype{128} << 20};
    QList<PictureRequest> m_wanted;
    Sharpness m_sharpness = Sharpness::asWanted;
    bool m_busy = false;
    QObject *m_answers = nullptr; ///< What answers about `m_document` come to.
};

} // namespace velmor
