#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace velmor {

/// What a document lies on, such as the scanner's lid or a table.
struct Ground {
    /// How far each pixel is from the ground's colour there, the most of all channels; 8 bits.
    cv::Mat difference;
    double grain; ///< The spread of the ground itself around its colour, in steps of 255.
};

/// What the ground of `image`, 8 bits and 3 channels, may be, the likeliest first. Each is the
/// colour of a part of the image's rim, carried on over the image in a plane for each channel,
/// since light falls off to the sides. Documents may reach the rim.
[[nodiscard]] std::vector<Ground> possibleGrounds(const cv::Mat &image);

} // namespace velmor
