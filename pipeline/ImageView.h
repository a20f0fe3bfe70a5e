#pragma once

#include <QImage>
#include <opencv2/core.hpp>

namespace velmor {

/// The pixels of `image` as a matrix of OpenCV's `type`, which must fit the image's format. Nothing
/// is copied: the image owns the pixels and must outlive the view. Only for images that share their
/// pixels with no other may they be written.
[[nodiscard]] inline cv::Mat imageView(const QImage &image, int type)
{
    return {image.height(), image.width(), type, const_cast<uchar *>(image.constBits()),
            static_cast<size_t>(image.bytesPerLine())};
}

} // namespace velmor
