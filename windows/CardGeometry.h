#pragma once

#include <QRect>

namespace velmor {

/// How near an edge the pointer takes hold of it, in logical pixels.
struct EdgeGrip {
    int outside = 0;
    int inside = 0;
};

/// The edges of `card` that the pointer takes hold of at `point`; none in the middle and far away.
/// Both in one coordinate system.
[[nodiscard]] Qt::Edges edgesAt(const QPoint &point, const QRect &card, EdgeGrip grip);

/// `card` after its `edges` were dragged by `way`, never smaller than `smallest`: the opposite
/// edges stay where they are.
[[nodiscard]] QRect resized(const QRect &card, Qt::Edges edges, const QPoint &way,
                            const QSize &smallest);

/// The least number of logical pixels, up to 4, that is a whole number of the screen's at `ratio`;
/// 1 if there is none. What changes its size by so many at a time keeps its edges sharp.
[[nodiscard]] int wholePixelStep(qreal ratio);

/// The pointer that shows what dragging the edges does.
[[nodiscard]] Qt::CursorShape cursorFor(Qt::Edges edges);

} // namespace velmor
