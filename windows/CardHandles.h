#pragma once

#include <QQuickItem>

namespace velmor {

class CardWindow;

/// Behind everything in a `CardWindow`: a press on the card that nothing else takes moves the
/// window.
class CardGround : public QQuickItem {
    Q_OBJECT

public:
    explicit CardGround(CardWindow &window);

    [[nodiscard]] bool contains(const QPointF &point) const override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;

    /// What a press at `point` takes hold of: none moves the window.
    [[nodiscard]] virtual Qt::Edges edgesAt(const QPointF &point) const;

    CardWindow &m_window;
};

/// Before everything in a `CardWindow`, but only along its edges: a press there resizes the card.
class CardEdges : public CardGround {
    Q_OBJECT

public:
    explicit CardEdges(CardWindow &window);

    [[nodiscard]] bool contains(const QPointF &point) const override;

protected:
    void hoverMoveEvent(QHoverEvent *event) override;
    [[nodiscard]] Qt::Edges edgesAt(const QPointF &point) const override;
};

} // namespace velmor
