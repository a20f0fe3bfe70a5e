#pragma once

#include <QSizeF>
#include <QTransform>

namespace velmor {

/// Takes places on a sheet of `size` to where they lie once the sheet is turned clockwise by
/// `degrees`, a multiple of 90 of any size and sign. Both are counted from the top left of the
/// sheet as it then lies.
[[nodiscard]] inline QTransform pageTurn(int degrees, QSizeF size)
{
    switch ((degrees % 360 + 360) % 360) {
    case 90:
        return {0, 1, -1, 0, size.height(), 0};
    case 180:
        return {-1, 0, 0, -1, size.width(), size.height()};
    case 270:
        return {0, -1, 1, 0, 0, size.width()};
    default:
        return {};
    }
}

} // namespace velmor
