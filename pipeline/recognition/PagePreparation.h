#pragma once

#include <QImage>

#include <optional>

namespace velmor {

/// A page made ready for recognition.
struct PreparedPage {
    QImage pixels; ///< Format_Grayscale8, dark on light.
    int dpi = 300; ///< Of `pixels`: the image's own, or guessed from a sheet of A4.
};

/// `image` in grey at no more than 300 dpi, on even white paper: tints and shadows are taken out,
/// blocks set light on dark are inverted. Nothing has moved: the result is the image, scaled.
///
/// The image's resolution is believed from 72 to 2400 dpi, but not below 150 on a side longer than
/// 1500 pixels: such an image, and one without a believable resolution, is taken for a sheet of A4.
/// Pure; any thread. Nothing for a null image or when memory doesn't suffice.
[[nodiscard]] std::optional<PreparedPage> preparePage(const QImage &image);

/// `page` turned clockwise by `degrees`: 0, 90, 180 or 270.
[[nodiscard]] PreparedPage turned(const PreparedPage &page, int degrees);

} // namespace velmor
