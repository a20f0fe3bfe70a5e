#pragma once

#include <QSize>

namespace scanengine {

/// The largest image that is read or made, in pixels. A4 at 1200 dpi has 139 million.
inline constexpr qint64 maxPixels = 300'000'000;

/// Whether an image of `size` may be allocated: it has pixels, and not too many.
[[nodiscard]] inline bool isWithinPixelLimit(QSize size)
{
    return !size.isEmpty() && qint64(size.width()) * size.height() <= maxPixels;
}

} // namespace scanengine
