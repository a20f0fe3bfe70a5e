#include "editor/InteractionLayer.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// The middle between two fingers.
QPointF middle(const QList<QEventPoint> &fingers, QPointF (QEventPoint::*place)() const)
{
    return ((fingers[0].*place)() + (fingers[1].*place)()) / 2;
}

/// How far apart two fingers are; at least a pixel.
qreal spread(const QList<QEventPoint> &fingers, QPointF (QEventPoint::*place)() const)
{
    const QPointF way = (fingers[0].*place)() - (fingers[1].*place)();
    return std::max(1.0, std::hypot(way.x(), way.y()));
}

} // namespace

InteractionLayer::InteractionLayer(QQuickItem *parent) : QQuickItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setAcceptTouchEvents(true);
    setKeepMouseGrab(true);
    setKeepTouchGrab(true);
}

void InteractionLayer::setCursorShape(Qt::CursorShape shape)
{
    setCursor(QCursor(shape));
    Q_EMIT cursorShapeChanged();
}

void InteractionLayer::begin(QPointF at)
{
    m_start = at;
    Q_EMIT dragged(at, at);
}

void InteractionLayer::follow(QPointF at)
{
    if (m_start)
        Q_EMIT dragged(*m_start, at);
}

void InteractionLayer::end(QPointF at)
{
    if (!m_start)
        return;
    const QPointF start = *m_start;
    m_start.reset();
    Q_EMIT ended(start, at);
}

void InteractionLayer::cancel()
{
    if (!m_start)
        return;
    m_start.reset();
    Q_EMIT canceled();
}

void InteractionLayer::mousePressEvent(QMouseEvent *event)
{
    begin(event->position());
}

void InteractionLayer::mouseMoveEvent(QMouseEvent *event)
{
    // There is no hovering while a button is down.
    Q_EMIT hovered(event->position());
    follow(event->position());
}

void InteractionLayer::mouseReleaseEvent(QMouseEvent *event)
{
    end(event->position());
}

void InteractionLayer::hoverLeaveEvent(QHoverEvent *)
{
    Q_EMIT hoverEnded();
}

void InteractionLayer::touchEvent(QTouchEvent *event)
{
    QList<QEventPoint> fingers = event->points();
    const QPointF last = fingers.constFirst().position();
    fingers.removeIf([](const auto &finger) { return finger.state() == QEventPoint::Released; });
    if (fingers.isEmpty()) {
        m_pinching = false;
        end(last);
        Q_EMIT hoverEnded();
    } else if (fingers.size() > 1) {
        cancel();
        Q_EMIT hoverEnded();
        // With a further finger the middle has jumped.
        if (fingers.size() == 2 && !event->touchPointStates().testFlag(QEventPoint::Pressed))
            pinch(fingers);
        m_pinching = true;
    } else if (!m_pinching) {
        const QPointF at = fingers.constFirst().position();
        Q_EMIT hovered(at);
        if (m_start)
            follow(at);
        else
            begin(at);
    }
}

void InteractionLayer::touchUngrabEvent()
{
    m_pinching = false;
    cancel();
    Q_EMIT hoverEnded();
}

void InteractionLayer::pinch(const QList<QEventPoint> &fingers)
{
    const QPointF at = middle(fingers, &QEventPoint::position);
    const QPointF before = mapFromScene(middle(fingers, &QEventPoint::sceneLastPosition));
    Q_EMIT pinched(spread(fingers, &QEventPoint::scenePosition) /
                       spread(fingers, &QEventPoint::sceneLastPosition),
                   at, at - before);
}

} // namespace velmor
