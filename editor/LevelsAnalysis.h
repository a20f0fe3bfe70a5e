#pragma once

#include "editor/MagicLevels.h"

#include <QImage>
#include <QList>
#include <QPointF>

#include <optional>
#include <vector>

namespace velmor {

/// The pixels of an image as bytes: red, green, blue, alpha (premultiplied) for each pixel, row
/// after row from the top, without gaps.
struct RgbaSample {
    std::vector<unsigned char> buf;
    int w = 0;
    int h = 0;
};

/// Measures of a page image on which levels are based. Pure; any thread.
///
/// Luminance is that of encoded values, the integer `(299 r + 587 g + 114 b) / 1000` of 0 to 255
/// unless said otherwise.

/// Nothing for an empty image or for want of memory.
[[nodiscard]] std::optional<RgbaSample> rgbaBuffer(const QImage &image);

/// How many pixels have each luminance, in 64 bins from dark to light.
[[nodiscard]] QList<int> histogram64(const RgbaSample &sample);

/// The pixel of an image of `w` by `h` that holds a place given as fractions; the nearest one for a
/// place outside.
[[nodiscard]] QPoint samplePixel(QPointF place, int w, int h);

/// The luminance, 0 to 1 and not rounded, of the one pixel at a place given as fractions.
[[nodiscard]] double sampleLuminance(const RgbaSample &sample, QPointF place);

/// Levels that make print readable, found from the edges of print: black ink on white paper rather
/// than a faithful picture. A page without print gets a fixed, high pair.
[[nodiscard]] MagicLevels autoLevels(const RgbaSample &sample);

/// The bars, 0 to 1, of `raw` as the page comes out with `levels`: scaled so that a peak of paper
/// doesn't flatten the rest, small ones lifted.
[[nodiscard]] QList<double> displayHistogram(const QList<int> &raw, const MagicLevels &levels);

} // namespace velmor
