// How a PDFView answers wheel, pointer, fingers and keys.

#include "preview/Background.h"
#include "preview/PDFView.h"

#include <QCursor>
#include <QGuiApplication>
#include <QNativeGestureEvent>
#include <QStyleHints>

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// Degrees of a wheel are counted in eighths; one notch is 15 of them.
constexpr double notch = 120;
constexpr double zoomPerNotch = 1.2;
/// Logical pixels by which a line, an arrow key or an unmoving pointer scrolls.
constexpr double lineHeight = 20;
constexpr double arrowStep = 60;
/// What stays in view when a key scrolls by a screenful, as a share of it.
constexpr double overlap = 0.1;

/// How far a wheel scrolls, in logical pixels towards the document's end.
QPointF wheelWay(const QWheelEvent &event)
{
    QPointF way = event.pixelDelta();
    if (way.isNull()) {
        const int lines = QGuiApplication::styleHints()->wheelScrollLines();
        way = QPointF(event.angleDelta()) / notch * (lines * lineHeight);
    }
    if (event.modifiers().testFlag(Qt::ShiftModifier) && way.x() == 0)
        way = {way.y(), 0};
    return -way;
}

/// The middle of all fingers.
QPointF middleOf(const QList<QEventPoint> &points, QPointF (QEventPoint::*place)() const)
{
    QPointF sum;
    for (const QEventPoint &point : points)
        sum += (point.*place)();
    return sum / static_cast<double>(points.size());
}

/// How far apart two fingers are.
double spread(const QList<QEventPoint> &points, QPointF (QEventPoint::*place)() const)
{
    const QPointF way = (points[0].*place)() - (points[1].*place)();
    return std::max(1.0, std::hypot(way.x(), way.y()));
}

bool isByTouch(const QMouseEvent &event)
{
    return event.device() && event.device()->type() == QInputDevice::DeviceType::TouchScreen;
}

} // namespace

bool PDFView::event(QEvent *event)
{
    if (event->type() != QEvent::NativeGesture)
        return QQuickItem::event(event);
    auto *const gesture = static_cast<QNativeGestureEvent *>(event);
    if (gesture->gestureType() == Qt::ZoomNativeGesture)
        zoomAbout(1 + gesture->value(), gesture->position());
    // The start and the end of a pinch aren't for those below either.
    const bool isOfPinch = gesture->gestureType() == Qt::ZoomNativeGesture ||
                           gesture->gestureType() == Qt::BeginNativeGesture ||
                           gesture->gestureType() == Qt::EndNativeGesture;
    event->setAccepted(isOfPinch);
    return isOfPinch;
}

void PDFView::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        zoomAbout(std::pow(zoomPerNotch, event->angleDelta().y() / notch), event->position());
    } else {
        const bool isTouchpad = event->hasPixelDelta();
        scrollBy(wheelWay(*event), isTouchpad ? Scrolling::atOnce : Scrolling::smooth);
    }
    event->accept();
}

void PDFView::touchEvent(QTouchEvent *event)
{
    QList<QEventPoint> points = event->points();
    points.removeIf([](const auto &point) { return point.state() == QEventPoint::Released; });
    if (points.isEmpty())
        return;
    const QPointF now = middleOf(points, &QEventPoint::position);
    const QPointF before = mapFromScene(middleOf(points, &QEventPoint::sceneLastPosition));
    if (event->touchPointStates().testFlag(QEventPoint::Pressed))
        return; // the middle has jumped
    scrollBy(before - now, Scrolling::atOnce);
    if (points.size() == 2) {
        zoomAbout(spread(points, &QEventPoint::scenePosition) /
                      spread(points, &QEventPoint::sceneLastPosition),
                  now);
    }
}

void PDFView::mousePressEvent(QMouseEvent *event)
{
    if (isByTouch(*event)) {
        event->ignore();
        return;
    }
    forceActiveFocus(Qt::MouseFocusReason);
    stopScrolling();
    m_pointer = event->position();
    const bool pans =
        event->button() == Qt::MiddleButton || m_spaceHeld || isOnBlankPage(m_pointer);
    m_drag = pans ? Drag::panning : Drag::selecting;
    const auto place = m_viewport.placeAt(m_pointer);
    if (!pans && event->modifiers().testFlag(Qt::ShiftModifier) && place)
        m_selection.extend(*place);
    else if (!pans && place)
        m_selection.start(*place);
    showCursor(m_pointer);
}

void PDFView::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF way = event->position() - m_pointer;
    m_pointer = event->position();
    if (m_drag == Drag::panning)
        scrollBy(-way, Scrolling::atOnce);
    if (m_drag != Drag::selecting)
        return;
    if (const auto place = m_viewport.placeAt(m_pointer))
        m_selection.extend(*place);
    if (contains(m_pointer))
        m_dragScroll.stop();
    else if (!m_dragScroll.isActive())
        m_dragScroll.start();
}

void PDFView::followPointer()
{
    const auto beyond = [](double at, double end) {
        return at - std::clamp(at, 0.0, end);
    };
    // The farther out, the faster.
    const QPointF way(beyond(m_pointer.x(), width()), beyond(m_pointer.y(), height()));
    scrollBy(way / 4, Scrolling::atOnce);
    if (const auto place = m_viewport.placeAt(m_pointer))
        m_selection.extend(*place);
}

void PDFView::mouseReleaseEvent(QMouseEvent *)
{
    mouseUngrabEvent();
}

void PDFView::mouseUngrabEvent()
{
    m_drag = Drag::none;
    m_dragScroll.stop();
    showCursor(m_pointer);
}

void PDFView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const auto place = m_viewport.placeAt(event->position());
    if (event->button() != Qt::LeftButton || !place || m_drag == Drag::panning)
        return;
    m_drag = Drag::none; // an unsteady hand would spoil the word
    m_selection.selectWord(*place);
}

void PDFView::hoverMoveEvent(QHoverEvent *event)
{
    m_pointer = event->position();
    showCursor(m_pointer);
    const auto place = m_viewport.placeAt(m_pointer);
    if (!m_shown || !place || place->page == m_hoveredPage)
        return;
    m_hoveredPage = place->page;
    m_hoveredText.reset();
    whenAnswered(
        this, m_shown->text(place->page),
        [this, page = place->page, document = std::weak_ptr(m_shown)](const PageText &text) {
            if (document.lock() == m_shown && page == m_hoveredPage)
                m_hoveredText = text.boxes;
            showCursor(m_pointer);
        });
}

bool PDFView::isOnBlankPage(QPointF at) const
{
    const auto place = m_viewport.placeAt(at);
    return place && place->page == m_hoveredPage && m_hoveredText && m_hoveredText->isEmpty();
}

void PDFView::showCursor(QPointF at)
{
    const auto isOnText = [&] {
        const auto place = m_viewport.placeAt(at);
        return place && place->page == m_hoveredPage && m_hoveredText &&
               std::ranges::any_of(*m_hoveredText,
                                   [&](const QRectF &box) { return box.contains(place->point); });
    };
    if (m_drag == Drag::panning)
        setCursor(QCursor(Qt::ClosedHandCursor));
    else if (m_spaceHeld)
        setCursor(QCursor(Qt::OpenHandCursor));
    else if (m_drag == Drag::selecting || isOnText())
        setCursor(QCursor(Qt::IBeamCursor));
    else
        unsetCursor();
}

bool PDFView::scrollByKey(const QKeyEvent &event)
{
    const double screenful = height() * (1 - overlap);
    const auto scroll = [this](double right, double down) {
        scrollBy({right, down}, Scrolling::smooth);
        return true;
    };
    if (event.modifiers() & ~(Qt::KeypadModifier | Qt::ControlModifier))
        return false;
    switch (event.key()) {
    case Qt::Key_Up:
        return scroll(0, -arrowStep);
    case Qt::Key_Down:
        return scroll(0, arrowStep);
    case Qt::Key_Left:
        return scroll(-arrowStep, 0);
    case Qt::Key_Right:
        return scroll(arrowStep, 0);
    case Qt::Key_PageUp:
        return scroll(0, -screenful);
    case Qt::Key_PageDown:
        return scroll(0, screenful);
    case Qt::Key_Home:
        scrollToShare({visibleShare().x(), 0});
        return true;
    case Qt::Key_End:
        scrollToShare({visibleShare().x(), 1});
        return true;
    default:
        return false;
    }
}

void PDFView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy)) {
        m_selection.copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        m_selection.selectAll();
    } else if (event->key() == Qt::Key_Escape && !m_selection.isEmpty()) {
        m_selection.clear();
    } else if (event->key() == Qt::Key_Space && !event->modifiers()) {
        m_spaceHeld = true;
        showCursor(m_pointer);
    } else if (!scrollByKey(*event)) {
        event->ignore();
    }
}

void PDFView::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space || event->isAutoRepeat()) {
        event->ignore();
        return;
    }
    m_spaceHeld = false;
    showCursor(m_pointer);
}

void PDFView::focusOutEvent(QFocusEvent *event)
{
    QQuickItem::focusOutEvent(event);
    m_spaceHeld = false;
    showCursor(m_pointer);
}

} // namespace velmor
