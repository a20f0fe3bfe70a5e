#include "windows/CardGeometry.h"

#include <algorithm>
#include <cmath>

namespace velmor {

Qt::Edges edgesAt(const QPoint &point, const QRect &card, EdgeGrip grip)
{
    const QRect reach = card.adjusted(-grip.outside, -grip.outside, grip.outside, grip.outside);
    const QRect middle = card.adjusted(grip.inside, grip.inside, -grip.inside, -grip.inside);
    Qt::Edges edges;
    if (!reach.contains(point))
        return edges;
    edges.setFlag(Qt::LeftEdge, point.x() < middle.left());
    edges.setFlag(Qt::RightEdge, point.x() > middle.right());
    edges.setFlag(Qt::TopEdge, point.y() < middle.top());
    edges.setFlag(Qt::BottomEdge, point.y() > middle.bottom());
    return edges;
}

QRect resized(const QRect &card, Qt::Edges edges, const QPoint &way, const QSize &smallest)
{
    QRect box = card;
    if (edges.testFlag(Qt::LeftEdge))
        box.setLeft(std::min(card.left() + way.x(), card.right() + 1 - smallest.width()));
    if (edges.testFlag(Qt::RightEdge))
        box.setRight(std::max(card.right() + way.x(), card.left() - 1 + smallest.width()));
    if (edges.testFlag(Qt::TopEdge))
        box.setTop(std::min(card.top() + way.y(), card.bottom() + 1 - smallest.height()));
    if (edges.testFlag(Qt::BottomEdge))
        box.setBottom(std::max(card.bottom() + way.y(), card.top() - 1 + smallest.height()));
    return box;
}

int wholePixelStep(qreal ratio)
{
    for (const int step : {1, 2, 3, 4}) {
        if (qFuzzyCompare(step * ratio, std::round(step * ratio)))
            return step;
    }
    return 1;
}

Qt::CursorShape cursorFor(Qt::Edges edges)
{
    const bool across = edges & (Qt::LeftEdge | Qt::RightEdge);
    const bool along = edges & (Qt::TopEdge | Qt::BottomEdge);
    if (across && along) {
        const bool falling =
            edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge);
        return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
    }
    if (across)
        return Qt::SizeHorCursor;
    return along ? Qt::SizeVerCursor : Qt::ArrowCursor;
}

} // namespace velmor
