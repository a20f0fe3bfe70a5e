#pragma once

#include "preview/PageNodes.h"
#include "preview/PagePictures.h"
#include "preview/TextSearch.h"
#include "preview/TextSelection.h"

#include <QQuickItem>
#include <QTimer>
#include <QVariantAnimation>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// Shows a document, all pages in one column, and lets its reader scroll, zoom, select and find.
/// Main thread.
///
/// Pages are drawn in the background for the zoom at hand; until a picture is there, an older one
/// is shown enlarged or reduced, or blank paper. The wheel and the touchpad scroll, with Ctrl, or
/// by a pinch, they zoom about the pointer; a drag with the middle button, or with the space key
/// held, moves the page. The left button selects text, Ctrl+C copies it, Ctrl+A selects all; on a
/// page without text the left button moves the page as well.
class PDFView : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double scaleFactor READ scaleFactor WRITE setScaleFactor NOTIFY scaleChanged)
    Q_PROPERTY(QString documentName READ documentName NOTIFY documentChanged)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY documentChanged)
    Q_PROPERTY(int currentPage READ currentPageIndex NOTIFY scrolled)
    Q_PROPERTY(QRectF visibleShare READ visibleShare NOTIFY scrolled)
    Q_PROPERTY(velmor::TextSearch *search READ search CONSTANT)

public:
    explicit PDFView(QQuickItem *parent = nullptr);
    ~PDFView() override;

    /// Reads a file in the background and shows it from its top, or nothing if it can't be opened.
    /// Until then there is no `document`; the pages shown so far stay in sight for a moment.
    void open(const QUrl &url);

    /// Null while there is none.
    [[nodiscard]] const PreviewDocument *document() const;
    /// Whether a file is being read.
    [[nodiscard]] bool isLoading() const { return m_wish != nullptr; }
    /// Its file's name; empty while there is none.
    [[nodiscard]] QString documentName() const;
    [[nodiscard]] int pageCount() const;

    [[nodiscard]] const DocumentViewport &viewport() const { return m_viewport; }
    [[nodiscard]] int currentPageIndex() const { return m_viewport.currentPage().value_or(-1); }

    [[nodiscard]] double scaleFactor() const { return m_viewport.scale(); }
    /// Keeps the middle of the top edge where it is.
    void setScaleFactor(double scale);
    /// The scale at which the widest page is as wide as the view; 0 without a document.
    [[nodiscard]] double scaleFactorForSizeToFit() const;

    /// Changes the scale by `factor`; what is at `point` stays there.
    void zoomAbout(double factor, QPointF point);
    /// The same about the middle of the view.
    Q_INVOKABLE void zoomBy(double factor);

    /// Which part of the column is in view, as fractions of its width and height; within 0 to 1.
    [[nodiscard]] QRectF visibleShare() const;
    /// Scrolls so that the view starts at these fractions.
    Q_INVOKABLE void scrollToShare(QPointF start);

    [[nodiscard]] TextSelection &selection() { return m_selection; }
    [[nodiscard]] TextSearch *search() { return &m_search; }
    [[nodiscard]] PagePictures &pictures() { return m_pictures; }

Q_SIGNALS:
    void documentChanged();
    void scaleChanged();
    /// The view has another size.
    void frameChanged();
    /// Another part of the document is in view.
    void scrolled();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    bool event(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void touchEvent(QTouchEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    enum class Drag { none, selecting, panning };
    enum class Scrolling { smooth, atOnce };

    void show(const std::shared_ptr<PreviewDocument> &document);
    void pictureTheView();
    [[nodiscard]] double pixelRatio() const;
    /// Has the next frame show what there is now.
    void refresh();
    [[nodiscard]] ShownPage shownPage(int page);

    /// Scrolls by logical pixels, towards the document's end when they are positive.
    void scrollBy(QPointF pixels, Scrolling scrolling);
    /// Applies a change of what is shown.
    template <typename Change> void move(Change change);
    void stopScrolling();
    void followPointer();
    /// Whether the page under the pointer is known to be without text.
    [[nodiscard]] bool isOnBlankPage(QPointF at) const;
    [[nodiscard]] bool scrollByKey(const QKeyEvent &event);
    void showCursor(QPointF at);

    DocumentViewport m_viewport;
    std::shared_ptr<PreviewDocument> m_shown; ///< What is in sight.
    std::shared_ptr<const int> m_wish;        ///< Alive while a file is being read.
    QList<ShownPage> m_pages;                 ///< For the scene graph.
    PagePictures m_pictures;
    TextSelection m_selection;
    TextSearch m_search;
    QTimer m_settling;   ///< Runs while the scale is on the move.
    QTimer m_oldPages;   ///< Until the pages of the document before vanish.
    QTimer m_dragScroll; ///< Runs while a selection is dragged beyond the view.
    QVariantAnimation m_scroll;
    Drag m_drag = Drag::none;
    bool m_spaceHeld = false;
    QPointF m_pointer; ///< Where a drag is, in view space.
    int m_hoveredPage = -1;
    std::optional<QList<QRectF>> m_hoveredText; ///< Where that page has text, once it's known.
};

} // namespace velmor
