#pragma once

#include "model/EditorViewport.h"
#include "preview/PageSheet.h"

#include <QList>

namespace velmor {

/// A place on a page of a document: points from the top left of the page as shown.
struct PagePlace {
    int page = 0;
    QPointF point;
};

/// What a view shows of a document whose pages stand in one column, and how that moves.
///
/// Two coordinate systems meet here, both with y down. Document space is in points from the top
/// left of the column, pages centred in it. View space is in logical pixels from the top left of
/// the view; at scale 1 a point is a pixel. A value without a window.
class DocumentViewport {
public:
    static constexpr double minScale = 0.05;
    static constexpr double maxScale = 20;
    /// Between two pages, in points.
    static constexpr double pageGap = 8;

    /// Shows these pages from their top. The scale stays.
    void setPages(const QList<PageSheet> &pages);
    [[nodiscard]] const QList<PageSheet> &pages() const { return m_pages; }

    /// The size of the view. What it shows at its top left stays there, if it can.
    void setViewSize(QSizeF size);
    [[nodiscard]] QSizeF viewSize() const { return m_viewSize; }

    [[nodiscard]] double scale() const { return m_scale; }

    /// Limits `scale` and applies it; what is shown at `fixed`, in view space, stays there, if it
    /// can.
    void setScale(double scale, QPointF fixed);

    /// The scale at which the widest page is as wide as the view. 0 without a page or a view.
    [[nodiscard]] double fitScale() const;

    /// The part of document space that the view shows. It goes beyond the column where that is
    /// smaller than the view, and has it in its middle then.
    [[nodiscard]] QRectF visible() const;

    /// Moves so that `topLeft`, in document space, is at the view's top left, or as near as the
    /// column's ends allow.
    void scrollTo(QPointF topLeft);

    /// Moves no more than needed to show `box` of a page away from the edges of the view.
    void reveal(int page, const QRectF &box);

    /// The size of the whole column, in points.
    [[nodiscard]] QSizeF contentSize() const { return m_contentSize; }

    /// Where a page stands in document space.
    [[nodiscard]] QRectF pageRect(int page) const;

    /// Where a box on a page is in view space.
    [[nodiscard]] QRectF toView(int page, const QRectF &box) const;

    /// The pages of which something is in view, in order. They follow each other.
    [[nodiscard]] QList<int> visiblePages() const;

    /// The page that takes most of the view, the upper one of equals. Nothing without a page.
    [[nodiscard]] std::optional<int> currentPage() const;

    /// The place at a point of the view; outside all pages, the nearest place on the nearest page.
    [[nodiscard]] std::optional<PagePlace> placeAt(QPointF point) const;

    /// The rectangle that the view shows, in the page space of `page`, y up.
    [[nodiscard]] QRectF visibleInPageSpace(int page) const;

    /// What an editor needs to open where the view is: the current page, the zoom relative to
    /// `fitScale` and at least 1, the middle of the view. The default without a page.
    [[nodiscard]] EditorViewport editorViewport() const;

private:
    [[nodiscard]] int firstPageBelow(double y) const;
    [[nodiscard]] QPointF limited(QPointF topLeft) const;

    QList<PageSheet> m_pages;
    QList<double> m_tops; ///< In document space, one for each page.
    QSizeF m_contentSize{0, 0};
    QSizeF m_viewSize{0, 0};
    double m_scale = 1;
    QPointF m_topLeft; ///< Of the view, in document space.
};

} // namespace velmor
