#pragma once

#include "scanengine/imaging/PaperField.h"

#include <QImage>

namespace scanengine {

/// A page looked over at about 150 dpi: its paper, and the strokes on it.
///
/// A stroke is thin, darker than its surroundings, and sharp. What shines through from the other
/// side of the sheet, a shadow or a fold is soft, as paper scatters light; that tells it from
/// pencil that is no darker.
struct PageSurvey {
    cv::Mat pixels;         ///< The page, one or four channels; empty for a page too small.
    double pixelsPerMm = 1; ///< Of `pixels`.
    PaperField paper;
    cv::Mat lightness; ///< Of `pixels`, 255 for as light as the paper, else as it is. 8-bit grey.
    cv::Mat strokes;   ///< Size of `pixels`: `strongStroke`, `weakStroke` or 0.
    double noise = 0;  ///< Standard deviation in `lightness` where nothing is.
};

inline constexpr uchar strongStroke = 255; ///< Reaches half the way to black somewhere.
inline constexpr uchar weakStroke = 128;

/// `image` is 8-bit grey or RGB32.
[[nodiscard]] PageSurvey surveyOf(const QImage &image);

} // namespace scanengine
