#include "windows/CardHandles.h"

#include "windows/CardGeometry.h"
#include "windows/CardWindow.h"

namespace velmor {

CardGround::CardGround(CardWindow &window) : QQuickItem(window.contentItem()), m_window(window)
{
    setZ(-1);
    setAcceptedMouseButtons(Qt::LeftButton);
}

bool CardGround::contains(const QPointF &point) const
{
    return m_window.cardInWindow().contains(point.toPoint());
}

Qt::Edges CardGround::edgesAt(const QPointF &) const
{
    return {};
}

void CardGround::mousePressEvent(QMouseEvent *event)
{
    m_window.beginDrag(event->globalPosition().toPoint(), edgesAt(event->position()));
}

void CardGround::mouseMoveEvent(QMouseEvent *event)
{
    m_window.dragTo(event->globalPosition().toPoint());
}

void CardGround::mouseReleaseEvent(QMouseEvent *)
{
    m_window.endDrag();
}

void CardGround::mouseUngrabEvent()
{
    m_window.endDrag();
}

CardEdges::CardEdges(CardWindow &window) : CardGround(window)
{
    constexpr qreal foremost = 1000;
    setZ(foremost);
    setAcceptHoverEvents(true);
}

bool CardEdges::contains(const QPointF &point) const
{
    return static_cast<bool>(edgesAt(point));
}

Qt::Edges CardEdges::edgesAt(const QPointF &point) const
{
    return m_window.edgesUnder(point.toPoint());
}

void CardEdges::hoverMoveEvent(QHoverEvent *event)
{
    setCursor(cursorFor(edgesAt(event->position())));
}

} // namespace velmor
