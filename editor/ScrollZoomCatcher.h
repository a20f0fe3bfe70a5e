#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// Turns the wheel and the touch pad over it into panning and zooming.
///
/// It has no content and takes no presses. All that is scrolled or pinched over it ends here,
/// whether or not there is anything to pan or to zoom. Main thread.
class ScrollZoomCatcher : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

public:
    using QQuickItem::QQuickItem;

Q_SIGNALS:
    /// The page goes along by `delta` points, to the right and down. A touch pad's deltas are
    /// passed on as they are; one notch of a wheel is three lines, as the desktop sets it.
    void pan(QPointF delta);
    /// The page grows by `factor` about `anchor`. Scrolling with Alt or Ctrl by 10 points upwards
    /// gives 1.1, by as much downwards 0.9; a notch is one line.
    void zoom(qreal factor, QPointF anchor);

protected:
    void wheelEvent(QWheelEvent *event) override;
    bool event(QEvent *event) override;
};

} // namespace velmor
