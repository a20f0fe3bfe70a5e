#pragma once

#include <QImage>
#include <QPolygonF>

namespace scanengine {

/// A rectangle laid on an image, in its pixels from its top left corner. May reach beyond it.
struct Window {
    QPointF center;
    QSize size;
    double angle = 0; ///< By which the rectangle is turned; degrees clockwise, -45 to 45.

    /// Clockwise from the corner that becomes the top left one.
    [[nodiscard]] QPolygonF corners() const;
};

/// What `window` shows of `image`, 8-bit grey or RGB32, turned upright by bicubic interpolation.
///
/// What lies beyond the image, or outside of the convex polygon `shown` (clockwise, in pixels of
/// the image; all of it if empty), is filled with the colour of the paper nearby, without its ink.
/// Format and resolution stay. Null if memory runs out.
[[nodiscard]] QImage turnedWindow(const QImage &image, const Window &window,
                                  const QPolygonF &shown = {});

} // namespace scanengine
