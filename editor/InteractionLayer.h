#pragma once

#include <QCursor>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace velmor {

/// Takes what a pointer does on the page: presses of the left button, single fingers, hovering and
/// two fingers.
///
/// It has no content. A gesture is one press with all that follows until the release; it begins
/// with a `dragged` whose two points are the same, also for a plain click. A finger hovers while it
/// is down. A second finger takes the gesture back, and the two pinch until both are gone. All
/// points are in the item's own coordinates. Main thread.
class InteractionLayer : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        Qt::CursorShape cursorShape READ cursorShape WRITE setCursorShape NOTIFY cursorShapeChanged)

public:
    explicit InteractionLayer(QQuickItem *parent = nullptr);

    /// Of the pointer over this item.
    [[nodiscard]] Qt::CursorShape cursorShape() const { return cursor().shape(); }
    void setCursorShape(Qt::CursorShape shape);

Q_SIGNALS:
    void cursorShapeChanged();
    /// The gesture that went down at `start` is at `location`.
    void dragged(QPointF start, QPointF location);
    /// The same, at its release.
    void ended(QPointF start, QPointF location);
    /// The gesture won't end: a pinch, or another item, has taken it over.
    void canceled();
    void hovered(QPointF location);
    void hoverEnded();
    /// Two fingers grew apart by `factor` about `anchor`, their middle, after it moved by
    /// `movement`.
    void pinched(qreal factor, QPointF anchor, QPointF movement);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override { cancel(); }
    void hoverMoveEvent(QHoverEvent *event) override { Q_EMIT hovered(event->position()); }
    void hoverEnterEvent(QHoverEvent *event) override { Q_EMIT hovered(event->position()); }
    void hoverLeaveEvent(QHoverEvent *event) override;
    void touchEvent(QTouchEvent *event) override;
    void touchUngrabEvent() override;

private:
    void begin(QPointF at);
    void follow(QPointF at);
    void end(QPointF at);
    void cancel();
    void pinch(const QList<QEventPoint> &fingers);

    std::optional<QPointF> m_start; ///< Of the gesture; absent while there is none.
    bool m_pinching = false;        ///< There were two fingers, and one is still there.
};

} // namespace velmor
