#pragma once

#include <QImage>
#include <QPointF>
#include <QPolygonF>
#include <QSizeF>

#include <optional>

namespace scanengine {

/// A rectangle that holds all paper on the bed.
///
/// In pixels of the image, from its top left corner, with a pixel's centre at (x + 0.5, y + 0.5).
/// It may reach beyond the image where paper does.
struct PageOutline {
    QPointF center;
    QSizeF size;
    double angle = 0; ///< By which its top side is turned; degrees clockwise, -15 to 15.
    /// Whether straight edges tell the angle. Otherwise it is 0 and the rectangle is merely around.
    bool hasStraightEdges = false;
    int sheets = 1;

    /// Clockwise from the corner that is top left on the page.
    [[nodiscard]] QPolygonF corners() const;
};

/// Where the paper lies on `bed`, 8-bit grey or RGB32, in front of a lid of any one neutral colour.
///
/// Several sheets lie in one rectangle. Nothing where the bed doesn't tell clearly: no lid is
/// visible, an edge is lost, or things lie around that could be content. Pure; any thread.
[[nodiscard]] std::optional<PageOutline> findPage(const QImage &bed);

} // namespace scanengine
