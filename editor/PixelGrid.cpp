#include "editor/PixelGrid.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <cmath>

namespace velmor {

QPointF onPixelGrid(const QQuickItem &item, QPointF place)
{
    const qreal ratio = item.window()->effectiveDevicePixelRatio();
    const QPointF origin = item.mapToScene({});
    const QPointF pixels = (origin + place) * ratio;
    return QPointF(std::round(pixels.x()), std::round(pixels.y())) / ratio - origin;
}

QRectF onPixelGrid(const QQuickItem &item, const QRectF &rect)
{
    return {onPixelGrid(item, rect.topLeft()), onPixelGrid(item, rect.bottomRight())};
}

} // namespace velmor
