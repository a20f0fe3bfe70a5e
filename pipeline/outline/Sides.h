#pragma once

#include "pipeline/outline/Shape.h"

#include <opencv2/core.hpp>

#include <optional>

namespace velmor {

/// The corners of the region that are known roughly, exactly: each side is looked for up to `reach`
/// pixels to either side of where it should be, where the colour changes from what is around the
/// region to what is in it. A straight line is laid through what is found; sides that run along the
/// rim of the image stay there.
///
/// `image` has 8 bits and 3 channels. Nothing if a side isn't there for most of its length, if it
/// isn't straight, or if more than two run along the rim.
[[nodiscard]] std::optional<PixelCorners> exactCorners(const cv::Mat &image,
                                                       const PixelCorners &rough, double reach);

} // namespace velmor
