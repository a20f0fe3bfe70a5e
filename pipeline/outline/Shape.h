#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <optional>
#include <vector>

namespace velmor {

/// Four corners in pixels from the edges of the image, one after the other around a region.
using PixelCorners = std::array<cv::Point2d, 4>;

/// The largest thing among the set pixels of `mask`, 8 bits, as the corners around it; found
/// roughly, to some pixels. Nothing if it is too small, if it isn't nearly as full as its four
/// corners allow, or if more lies about than specks.
[[nodiscard]] std::optional<PixelCorners> largestShape(const cv::Mat &mask);

/// The same region with four corners where `hull`, a convex polygon, may have more: sides are
/// extended in place of those between them, with the least that this adds. Nothing for a hull that
/// can't be had with four.
[[nodiscard]] std::optional<PixelCorners> fourCorners(std::vector<cv::Point2d> hull);

} // namespace velmor
