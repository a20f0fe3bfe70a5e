#pragma once

#include "scanengine/imaging/LidSearch.h"

#include <opencv2/core.hpp>

namespace scanengine {

/// A straight stretch on which one side of a page is expected: the points
/// `outward` * `distance` + `along` * s for s from `from` to `to`, in pixels of the bed view.
struct SideGuess {
    cv::Point2d outward; ///< Unit vector.
    cv::Point2d along;   ///< Unit vector, at a right angle.
    double distance = 0;
    double from = 0;
    double to = 0;
};

/// The edge that was found near a guess.
struct SideFit {
    double distance = 0; ///< Of the edge in the middle of the stretch; pixels as in the guess.
    double tilt = 0;     ///< How much the distance grows for each pixel along the side.
    /// The share of the stretch, as far as the bed shows it, where the edge is on that line.
    double support = 0;
    /// The share of the stretch that lies on the bed.
    double visible = 0;
    double length = 0; ///< Of the supported part, in pixels.
    double place = 0;  ///< The middle of the supported part, in pixels from that of the stretch.
};

/// Looks up to `reachMm` to both sides of the guess, to a fraction of a pixel.
[[nodiscard]] SideFit fitSide(const BedView &bed, const SideGuess &guess, double reachMm);

} // namespace scanengine
