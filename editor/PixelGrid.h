#pragma once

#include <QPointF>
#include <QRectF>

class QQuickItem;

namespace velmor {

/// A place in `item`, which is in a window and neither turned nor scaled, moved to the nearest
/// corner of one of the window's pixels; and a rectangle with its corners so moved. What is drawn
/// there pixel by pixel is shown so.
[[nodiscard]] QPointF onPixelGrid(const QQuickItem &item, QPointF place);
[[nodiscard]] QRectF onPixelGrid(const QQuickItem &item, const QRectF &rect);

} // namespace velmor
