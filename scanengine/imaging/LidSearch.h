#pragma once

#include "scanengine/imaging/PixelView.h"

#include <opencv2/core.hpp>

#include <vector>

namespace scanengine {

/// A bed reduced and smoothed for finding what lies on it.
struct BedView {
    cv::Mat color;    ///< CV_32FC3, levels of 255.
    cv::Mat slope;    ///< CV_32FC1: how steep the colour changes, in levels a pixel.
    double grain = 1; ///< The slope that noise and texture reach on plain surfaces.
    double pixelsPerMm = 1;
};

[[nodiscard]] BedView bedView(const ReducedImage &image);

/// The colour at a point, counted from the top left corner; of the nearest one beyond the bed.
[[nodiscard]] cv::Vec3f colorAt(const BedView &bed, cv::Point2d at);

/// One way to tell the lid from what lies on the bed.
struct LidGuess {
    cv::Mat lid;                               ///< CV_8UC1, 255 where the lid shows.
    std::vector<std::vector<cv::Point>> items; ///< The outer contours of all large things.
    int specks = 0;                            ///< Small things beside the items: dust, or letters.
    double largestSpeck = 0;                   ///< Millimetres.
};

/// All guesses worth a look when breaks of `gapMm` in the items' edges are bridged.
///
/// A lid is one plain surface of no marked colour, or several alike, that reaches the sides of the
/// bed. A page's own margin can be one too: which guess holds is not decided here.
[[nodiscard]] std::vector<LidGuess> lidGuesses(const BedView &bed, double gapMm);

} // namespace scanengine
