#include "editor/ScrollZoomCatcher.h"

#include <QGuiApplication>
#include <QNativeGestureEvent>
#include <QStyleHints>

#include <cmath>

namespace velmor {

namespace {

/// Degrees of a wheel are counted in eighths; one notch is 15 of them.
constexpr qreal notch = 120;
/// Of a line that a wheel scrolls by, in points.
constexpr qreal lineHeight = 20;
/// By how much a point of scrolling zooms.
constexpr qreal zoomPerPoint = 0.01;

/// How far a wheel or a touch pad scrolled, in points. A wheel knows only degrees.
QPointF scrolled(const QWheelEvent &event, qreal linesPerNotch)
{
    if (event.hasPixelDelta())
        return event.pixelDelta();
    return QPointF(event.angleDelta()) / notch * (linesPerNotch * lineHeight);
}

/// The one of the two axes that was meant: with Alt, X11 makes of a vertical wheel a horizontal
/// one.
qreal mainAxis(QPointF delta)
{
    return std::abs(delta.x()) > std::abs(delta.y()) ? delta.x() : delta.y();
}

} // namespace

void ScrollZoomCatcher::wheelEvent(QWheelEvent *event)
{
    event->accept();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (modifiers & (Qt::AltModifier | Qt::ControlModifier)) {
        Q_EMIT zoom(1 + mainAxis(scrolled(*event, 1)) * zoomPerPoint, event->position());
        return;
    }
    QPointF delta = scrolled(*event, QGuiApplication::styleHints()->wheelScrollLines());
    if (modifiers.testFlag(Qt::ShiftModifier) && delta.x() == 0)
        delta = delta.transposed();
    Q_EMIT pan(delta);
}

bool ScrollZoomCatcher::event(QEvent *event)
{
    if (event->type() != QEvent::NativeGesture)
        return QQuickItem::event(event);
    auto *const gesture = static_cast<QNativeGestureEvent *>(event);
    if (gesture->gestureType() == Qt::ZoomNativeGesture)
        Q_EMIT zoom(1 + gesture->value(), gesture->position());
    // The start and the end of a pinch aren't for those below either.
    const bool isOfPinch = gesture->gestureType() == Qt::ZoomNativeGesture ||
                           gesture->gestureType() == Qt::BeginNativeGesture ||
                           gesture->gestureType() == Qt::EndNativeGesture;
    event->setAccepted(isOfPinch);
    return isOfPinch;
}

} // namespace velmor
