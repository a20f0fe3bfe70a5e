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

/// The pointer that shows what dragging the edges does.
[[nodiscard]] Qt::CursorShape cursorFor(Qt::Edges edges);

} // namespace velmor
