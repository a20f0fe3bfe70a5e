#pragma once

#include "windows/Compositing.h"

#include <QDeadlineTimer>
#include <QQuickWindow>
#include <QTimer>

#include <optional>

namespace velmor {

/// A frameless, translucent window that is a card with rounded corners and a shadow of its own.
///
/// The window is larger than the card by `margin` on each side, which is the room for the shadow;
/// the pointer goes through it to what lies below. Where nothing can be translucent there is no
/// margin, and the window is cut to the shape of the card. The QML that builds on this type draws
/// the card at (margin, margin), `cardWidth` by `cardHeight` large, and the shadow behind it.
///
/// The size follows the card. While that grows, in an animation perhaps, the window is ahead of
/// it, so that it isn't resized with each frame. The user moves the window by whatever part of
/// the card takes no press, and can resize it by its edges if it is to be resized `byUser`. A press
/// also takes the ring off what the keyboard has brought the focus to.
///
/// Everything in logical pixels; positions are those of the screens, top left, but for a native
/// child of another window on Wayland, whose screen position is that of its parent plus its own.
class CardWindow : public QQuickWindow {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int cardWidth READ cardWidth WRITE setCardWidth NOTIFY cardSizeChanged)
    Q_PROPERTY(int cardHeight READ cardHeight WRITE setCardHeight NOTIFY cardSizeChanged)
    Q_PROPERTY(QSize smallestCard MEMBER m_smallestCard)
    Q_PROPERTY(qreal cardRadius MEMBER m_cardRadius NOTIFY cardRadiusChanged)
    Q_PROPERTY(int shadowMargin MEMBER m_shadowMargin NOTIFY marginChanged)
    Q_PROPERTY(int margin READ margin NOTIFY marginChanged)
    Q_PROPERTY(bool composited READ composited NOTIFY marginChanged)

public:
    /// What decides on the size of the card.
    enum class Resizing { byContent, byUser };

    explicit CardWindow(QWindow *parent = nullptr) : CardWindow(Resizing::byContent, parent) {}
    explicit CardWindow(Resizing resizing, QWindow *parent = nullptr);

    [[nodiscard]] int cardWidth() const { return m_cardSize.width(); }
    void setCardWidth(int width) { setCardSize({width, m_cardSize.height()}); }
    [[nodiscard]] int cardHeight() const { return m_cardSize.height(); }
    void setCardHeight(int height) { setCardSize({m_cardSize.width(), height}); }
    [[nodiscard]] QSize cardSize() const { return m_cardSize; }
    /// What the user can't go below.
    [[nodiscard]] QSize smallestCard() const { return m_smallestCard; }
    void setCardSize(const QSize &size);
    [[nodiscard]] int margin() const { return composited() ? m_shadowMargin : 0; }
    [[nodiscard]] bool composited() const { return m_compositing.isActive(); }

    /// The card on the screen.
    [[nodiscard]] QRect cardGeometry() const;
    void setCardPosition(const QPoint &topLeft);
    /// Asked after each move of the window: whether it is one that this program wanted, a step
    /// towards it or as near to it as the window manager allows, and not one from outside.
    [[nodiscard]] bool isOwnMove();

    /// The card, from the window's top left corner.
    [[nodiscard]] QRect cardInWindow() const;
    /// The edges that the pointer takes hold of at a point of the window.
    [[nodiscard]] Qt::Edges edgesUnder(const QPoint &windowPosition) const;

    /// The steps of a drag, at points of the screen: it moves the window, or those edges of it.
    void beginDrag(const QPoint &pointer, Qt::Edges edges);
    void dragTo(const QPoint &pointer);
    void endDrag() { m_drag.reset(); }

Q_SIGNALS:
    void cardSizeChanged();
    void cardRadiusChanged();
    void marginChanged();
    /// The user dragged the window, or an edge of it, one step further: the card goes to `topLeft`.
    void dragged(const QPoint &topLeft);
    /// The user or the desktop wants the window closed. The desktop closes it by itself.
    void closeAsked();

protected:
    bool event(QEvent *event) override;
    void exposeEvent(QExposeEvent *event) override;

private:
    /// A press that moves the window, or resizes it where it has taken hold of edges.
    struct Drag {
        QPoint from;
        QRect card;
        Qt::Edges edges;
        bool moving = false; ///< Past the distance below which it is a click.
    };

    [[nodiscard]] QSize fittingSize() const;
    void followCard();
    void setFrame(const QPoint &cardTopLeft, const QSize &size);
    void updateShape();
    void changeMargin();

    QSize m_cardSize{1, 1};
    QSize m_smallestCard{1, 1};
    qreal m_cardRadius = 0;
    int m_shadowMargin = 0;
    const Resizing m_resizing;
    Compositing m_compositing;
    QTimer m_fitting;
    std::optional<Drag> m_drag;
    int m_usedMargin = 0;     ///< The one that the window's position counts in.
    QPoint m_sentTo;          ///< Where this program put the window last.
    QDeadlineTimer m_arrival; ///< Runs until the window has arrived there, or as near as it comes.
};

} // namespace velmor
