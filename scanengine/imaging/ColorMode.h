#pragma once

#include <QImage>
#include <QStringView>

#include <optional>

namespace scanengine {

/// Which colours a page keeps. `automatic` keeps them only on a page that shows some.
enum class ColorMode { automatic, color, gray, blackWhite };

/// The mode that the protocol calls `word`, if there is one.
[[nodiscard]] std::optional<ColorMode> colorModeOf(QStringView word);

/// `image`, which is 8-bit grey or RGB32, in a format that holds just what `mode` keeps: RGB32,
/// 8-bit grey, or one bit a pixel. The resolution stays.
///
/// Black and white are parted at the grey level that parts ink from paper best on this page.
[[nodiscard]] QImage inColorMode(const QImage &image, ColorMode mode);

} // namespace scanengine
