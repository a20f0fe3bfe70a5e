#pragma once

#include <QImage>

#include <optional>

namespace scanengine {

/// `image`, 8-bit grey or RGB32, at `dpi` dots per inch on both axes, from the resolution that it
/// states for each. The result states `dpi` and keeps the format.
///
/// A side has at least one pixel. Nothing if the result would be beyond `maxPixels` or memory.
[[nodiscard]] std::optional<QImage> atResolution(const QImage &image, int dpi);

} // namespace scanengine
