#pragma once

#include <QImage>

namespace scanengine {

/// `image`, 8-bit grey or RGB32, made lighter and with more contrast, or less of both.
///
/// Both run from -1000 to 1000, 0 changes nothing, values outside count as the nearest inside.
/// Brightness moves every level by a third of its value, of 255. Contrast then spreads the levels
/// around the middle: `contrast` c by 1 + c/900, and -c undoes it.
[[nodiscard]] QImage withLevels(QImage image, int brightness, int contrast);

/// `image`, 8-bit grey or RGB32, with the paper made white and the ink left dark.
///
/// The paper is the most frequent light level of each channel, so tinted paper loses its tint too.
/// A channel without light levels stays.
[[nodiscard]] QImage withCleanBackground(QImage image);

} // namespace scanengine
