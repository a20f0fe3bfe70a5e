#pragma once

#include "browser/ScansBrowser.h"
#include "browser/ThumbnailStore.h"
#include "controls/PictureItem.h"

#include <QPointer>

namespace velmor {

/// The picture in a cell of the grid: the first page of the scan at `place` in the browser's
/// results, on white, with rounded corners. It follows the browser: what stands at its place,
/// whether that is marked, and its content. The old picture stays until the new one is there.
///
/// `ratio` is height by width, and the height of the item is for its owner to set. Main thread.
class PDFThumbnail : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::ScansBrowser *browser MEMBER m_browser WRITE setBrowser NOTIFY placed)
    Q_PROPERTY(velmor::ThumbnailStore *store MEMBER m_store NOTIFY placed)
    Q_PROPERTY(int place MEMBER m_place NOTIFY placed)
    Q_PROPERTY(QUrl url READ url NOTIFY changed)
    Q_PROPERTY(bool isThere READ isThere NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(bool selected READ isSelected NOTIFY changed)
    Q_PROPERTY(qreal ratio READ ratio NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)

public:
    explicit PDFThumbnail(QQuickItem *parent = nullptr);
    ~PDFThumbnail() override;

    void setBrowser(ScansBrowser *browser);
    /// Empty for a place behind the last scan.
    [[nodiscard]] QUrl url() const { return m_url; }
    [[nodiscard]] bool isThere() const { return !m_url.isEmpty(); }
    [[nodiscard]] QString name() const;
    [[nodiscard]] bool isSelected() const { return m_selected; }
    [[nodiscard]] qreal ratio() const { return m_thumbnail.ratio; }
    /// The first page, if it has been drawn.
    [[nodiscard]] const QImage &picture() const { return m_thumbnail.image; }
    [[nodiscard]] bool hasImage() const { return !m_thumbnail.image.isNull(); }

Q_SIGNALS:
    void placed();
    void changed();
    void imageChanged();

protected:
    void paint(QPainter &painter, QSizeF size) const override;
    void componentComplete() override;

private:
    void refresh();
    void load();
    void drop();
    void show(const Thumbnail &thumbnail);

    QPointer<ScansBrowser> m_browser;
    QPointer<ThumbnailStore> m_store;
    int m_place = -1;
    QUrl m_url;
    int m_revision = 0;
    bool m_selected = false;
    bool m_isLoaded = false; ///< The picture of this file and revision is there or on its way.
    Thumbnail m_thumbnail;
    ThumbnailStore::Dropped m_dropped; ///< Of the drawing under way, if there is one.
};

} // namespace velmor
