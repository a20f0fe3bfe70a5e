#pragma once

#include <QImage>
#include <opencv2/core.hpp>

namespace scanengine {

/// The pixels of `image`, 8-bit grey or RGB32, where they are: CV_8UC1, or CV_8UC4 as blue, green,
/// red and an idle byte. Valid as long as `image` is and isn't detached.
[[nodiscard]] const cv::Mat pixelsOf(const QImage &image);
/// The same for writing; detaches `image` first.
[[nodiscard]] cv::Mat writablePixelsOf(QImage &image);

/// `pixels`, CV_8UC1 or CV_8UC4, made smaller: each pixel is the mean of a square of `factor` by
/// `factor`, 1 to 256. What is left over at the right and the bottom doesn't count.
[[nodiscard]] cv::Mat meansOf(const cv::Mat &pixels, int factor);

/// An image made smaller for finding things on it.
struct ReducedImage {
    cv::Mat pixels;         ///< Format as in `pixelsOf`; empty if the image is too small to use.
    int factor = 1;         ///< Pixels of the image to one of these, on each axis.
    double pixelsPerMm = 1; ///< Of these pixels.
};

/// `image` at `dpi` up to twice as many, each pixel the mean of those it stands for; as it is if it
/// has less. Up to one such pixel at the right and the bottom may be left out.
///
/// At most `maxReducedPixels`, whatever resolution the image states. Pixels are taken as square.
[[nodiscard]] ReducedImage reduced(const QImage &image, double dpi);

inline constexpr double maxReducedPixels = 4'000'000;

} // namespace scanengine
