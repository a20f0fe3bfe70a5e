#include "windows/CardWindow.h"

#include "windows/CardGeometry.h"
#include "windows/CardHandles.h"
#include "windows/WindowShape.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace velmor {

namespace {

/// How far the window is ahead of a growing card.
constexpr int growthAhead = 480;
/// A card that kept its size this long has stopped growing or shrinking.
constexpr std::chrono::milliseconds settled{250};
/// Within this time the window system has moved a window to where it was sent, or as near to it as
/// its window manager lets it come.
constexpr std::chrono::milliseconds arrivalTime{500};
/// A pointer that moved less than this, across and along together, clicks.
constexpr int clickDistance = 3;
/// Inside a card without margin nothing but its own edge can be held.
constexpr EdgeGrip gripWithMargin{6, 3};
constexpr EdgeGrip gripWithoutMargin{0, 5};

bool onWayland()
{
    return QGuiApplication::platformName().startsWith(u"wayland");
}

/// How much taller a window may become at its bottom without being pushed up by window managers
/// that keep windows on the screen.
int roomBelow(const QWindow &window, int bottom)
{
    const QScreen *screen = window.screen();
    if (onWayland() || !screen)
        return growthAhead;
    return std::max(0, screen->availableGeometry().bottom() - bottom);
}

} // namespace

CardWindow::CardWindow(Resizing resizing, QWindow *parent)
    : QQuickWindow(parent), m_resizing(resizing)
{
    setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowMinimizeButtonHint);
    setColor(Qt::transparent);
    new CardGround(*this);
    if (m_resizing == Resizing::byUser)
        new CardEdges(*this);
    m_usedMargin = margin();
    m_fitting.setSingleShot(true);
    m_fitting.setInterval(settled);
    connect(&m_fitting, &QTimer::timeout, this,
            [this] { setFrame(cardGeometry().topLeft(), fittingSize()); });
    connect(&m_compositing, &Compositing::activeChanged, this, &CardWindow::marginChanged);
    connect(this, &CardWindow::marginChanged, this, &CardWindow::changeMargin);
    connect(this, &CardWindow::cardRadiusChanged, this, &CardWindow::updateShape);
}

// --- Size and place ------------------------------------------------------------------------------

QRect CardWindow::cardInWindow() const
{
    return {QPoint(margin(), margin()), m_cardSize};
}

QRect CardWindow::cardGeometry() const
{
    const QPoint origin = QWindow::parent() ? QWindow::parent()->position() : QPoint();
    return {origin + position() + QPoint(m_usedMargin, m_usedMargin), m_cardSize};
}

QSize CardWindow::fittingSize() const
{
    return m_cardSize + QSize(2 * margin(), 2 * margin());
}

void CardWindow::setCardPosition(const QPoint &topLeft)
{
    setFrame(topLeft, size());
}

void CardWindow::setCardSize(const QSize &size)
{
    if (size == m_cardSize || size.isEmpty())
        return;
    m_cardSize = size;
    followCard();
    Q_EMIT cardSizeChanged();
}

/// Makes room for the card at once, and takes room away only when it has come to rest.
void CardWindow::followCard()
{
    const QPoint cardTopLeft = cardGeometry().topLeft();
    if (!isVisible() || m_resizing == Resizing::byUser) {
        setFrame(cardTopLeft, fittingSize());
        return;
    }
    QSize room = size().expandedTo(fittingSize());
    if (room.height() > height()) {
        const int bottom = cardTopLeft.y() - margin() + room.height();
        room.rheight() += std::min(growthAhead, roomBelow(*this, bottom));
    }
    if (room != size())
        setFrame(cardTopLeft, room);
    m_fitting.start();
    updateShape();
}

void CardWindow::setFrame(const QPoint &cardTopLeft, const QSize &size)
{
    const QPoint origin = QWindow::parent() ? QWindow::parent()->position() : QPoint();
    // Whatever the window manager thinks, the size isn't its to change.
    setMinimumSize({1, 1});
    setMaximumSize(size);
    setMinimumSize(size);
    m_usedMargin = margin();
    const QPoint topLeft = cardTopLeft - origin - QPoint(m_usedMargin, m_usedMargin);
    if (topLeft != position() || !m_arrival.hasExpired())
        m_arrival.setRemainingTime(arrivalTime);
    m_sentTo = topLeft;
    setGeometry({topLeft, size});
    updateShape();
}

bool CardWindow::isOwnMove()
{
    // Asked for x and for y: it is the same answer for both.
    if (position() != m_sentTo)
        return !m_arrival.hasExpired();
    m_arrival.setRemainingTime(0);
    return true;
}

void CardWindow::changeMargin()
{
    setFrame(cardGeometry().topLeft(), fittingSize());
}

void CardWindow::updateShape()
{
    const bool byUser = m_resizing == Resizing::byUser;
    const int grip = composited() && byUser ? gripWithMargin.outside : 0;
    setInputShape(*this, cardInWindow().adjusted(-grip, -grip, grip, grip));
    if (composited())
        clearVisibleShape(*this);
    else
        setVisibleShape(*this, cardInWindow(), m_cardRadius);
}

void CardWindow::exposeEvent(QExposeEvent *event)
{
    QQuickWindow::exposeEvent(event);
    if (isExposed())
        updateShape();
}

// --- Moving and resizing -------------------------------------------------------------------------

Qt::Edges CardWindow::edgesUnder(const QPoint &windowPosition) const
{
    if (m_resizing != Resizing::byUser)
        return {};
    return edgesAt(windowPosition, cardInWindow(),
                   composited() ? gripWithMargin : gripWithoutMargin);
}

void CardWindow::beginDrag(const QPoint &pointer, Qt::Edges edges)
{
    m_drag = {pointer, cardGeometry(), edges};
}

void CardWindow::dragTo(const QPoint &pointer)
{
    if (!m_drag)
        return;
    const QPoint way = pointer - m_drag->from;
    if (!m_drag->moving && way.manhattanLength() <= clickDistance)
        return;
    m_drag->moving = true;
    QRect card = m_drag->card.translated(way);
    if (m_drag->edges) {
        const int step = wholePixelStep(devicePixelRatio());
        card = resized(m_drag->card, m_drag->edges, way / step * step, m_smallestCard);
        m_cardSize = card.size();
        setFrame(card.topLeft(), fittingSize());
        Q_EMIT cardSizeChanged();
    } else if (onWayland() && !QWindow::parent()) {
        m_drag.reset(); // Only the compositor can move it; the release doesn't come here.
        startSystemMove();
        return;
    } else {
        // Not by the window manager, as some report the way only at its end: what is attached to
        // this window goes along at every step.
        setCardPosition(card.topLeft());
    }
    Q_EMIT dragged(card.topLeft());
}

bool CardWindow::event(QEvent *event)
{
    // A control that got the focus by a key shows it until then.
    if (event->type() == QEvent::MouseButtonPress && activeFocusItem() &&
        activeFocusItem()->metaObject()->indexOfProperty("focusReason") >= 0)
        activeFocusItem()->setProperty("focusReason", Qt::MouseFocusReason);
    if (event->type() == QEvent::Close)
        Q_EMIT closeAsked();
    return QQuickWindow::event(event);
}

} // namespace velmor
