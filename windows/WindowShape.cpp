#include "windows/WindowShape.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <vector>
#include <xcb/shape.h>

namespace velmor {

namespace {

xcb_connection_t *x11ConnectionOf(const QWindow &window)
{
    auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 && window.handle() ? x11->connection() : nullptr;
}

QRect physical(const QRect &part, const QWindow &window)
{
    const double scale = window.devicePixelRatio();
    return QRectF(QPointF(part.topLeft()) * scale, QSizeF(part.size()) * scale).toAlignedRect();
}

void setShape(QWindow &window, xcb_shape_sk_t kind, const QList<QRect> &rows)
{
    xcb_connection_t *connection = x11ConnectionOf(window);
    if (!connection)
        return;
    std::vector<xcb_rectangle_t> rectangles;
    for (const QRect &row : rows) {
        rectangles.push_back({static_cast<int16_t>(row.x()), static_cast<int16_t>(row.y()),
                              static_cast<uint16_t>(row.width()),
                              static_cast<uint16_t>(row.height())});
    }
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_BANDED,
                         static_cast<xcb_window_t>(window.winId()), 0, 0,
                         static_cast<uint32_t>(rectangles.size()), rectangles.data());
    xcb_flush(connection);
}

} // namespace

QList<QRect> roundedRows(const QRect &box, double radius)
{
    const double bounded = std::clamp(radius, 0.0, std::min(box.width(), box.height()) / 2.0);
    const int corner = static_cast<int>(std::ceil(bounded));
    QList<QRect> rows;
    const auto append = [&](int top, int height, int inset) {
        if (height > 0 && box.width() > 2 * inset)
            rows.append({box.x() + inset, top, box.width() - 2 * inset, height});
    };
    const auto inset = [&](int row) {
        const double rise = bounded - (row + 0.5);
        const double reach = std::sqrt(std::max(0.0, bounded * bounded - rise * rise));
        return rise > 0 ? static_cast<int>(std::lround(bounded - reach)) : 0;
    };
    for (int row = 0; row < corner; ++row)
        append(box.y() + row, 1, inset(row));
    append(box.y() + corner, box.height() - 2 * corner, 0);
    for (int row = std::min(corner, box.height() - corner) - 1; row >= 0; --row)
        append(box.y() + box.height() - 1 - row, 1, inset(row));
    return rows;
}

void setInputShape(QWindow &window, const QRect &part)
{
    if (x11ConnectionOf(window))
        setShape(window, XCB_SHAPE_SK_INPUT, {physical(part, window)});
    else if (QGuiApplication::platformName().startsWith(u"wayland"))
        window.setMask(part); // Takes input alone there; nothing is cut off.
}

void setVisibleShape(QWindow &window, const QRect &part, double radius)
{
    setShape(window, XCB_SHAPE_SK_BOUNDING,
             roundedRows(physical(part, window), radius * window.devicePixelRatio()));
}

void clearVisibleShape(QWindow &window)
{
    if (xcb_connection_t *connection = x11ConnectionOf(window)) {
        xcb_shape_mask(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                       static_cast<xcb_window_t>(window.winId()), 0, 0, XCB_NONE);
        xcb_flush(connection);
    }
}

} // namespace velmor
