#pragma once

#include <QImage>
#include <QStringView>

#include <optional>

namespace scanengine {

/// Which colours a page keeps. For `automatic` see `colorsOf`.
enum class ColorMode { automatic, color, gray, blackWhite };

/// The mode that the protocol calls `word`, if there is one.
[[nodiscard]] std::optional<ColorMode> colorModeOf(QStringView word);

/// `image`, which is 8-bit grey or RGB32, in a format that holds just what `mode`, other than
/// `automatic`, keeps: RGB32, 8-bit grey, or one bit a pixel. The resolution stays. A null image
/// means that memory ran out.
[[nodiscard]] QImage inColorMode(const QImage &image, ColorMode mode);

} // namespace scanengine
