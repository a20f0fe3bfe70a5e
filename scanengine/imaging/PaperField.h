#pragma once

#include <opencv2/core.hpp>

namespace scanengine {

/// What the paper of a page would look like without anything on it: its colour from place to place,
/// shadows and the lamp's falloff included.
///
/// On a coarse grid whose cells cover the page evenly. Where there is no paper to be seen, as under
/// a photograph, it is carried on from around.
struct PaperField {
    bool exists = false; ///< False for a page that shows no paper; nothing else is set then.
    cv::Mat color;       ///< One or three channels of 8 bits, as the page has.
    cv::Mat lightness;   ///< The same as 8-bit grey.
    cv::Mat isPaper;     ///< 255 where paper was seen, between strokes too; 0 in pictures.
};

/// The paper of a page of one or four channels (blue, green, red, idle), 8 bits. `pixelsPerMm` is
/// about 6. Paper is light, may be tinted, and surrounds the rest of the page.
[[nodiscard]] PaperField paperOf(const cv::Mat &page, double pixelsPerMm);

/// `image` or, of four channels, its first three, as grey.
[[nodiscard]] cv::Mat greyOf(const cv::Mat &image);

} // namespace scanengine
