#include "scanengine/imaging/ToneCurve.h"

#include "scanengine/imaging/PixelView.h"

#include <opencv2/core/utility.hpp>

namespace scanengine {

QImage withToneCurve(QImage image, const ToneCurve &curve)
{
    cv::Mat pixels = writablePixelsOf(image);
    cv::parallel_for_({0, pixels.rows}, [&](const cv::Range &range) {
        for (int y = range.start; y < range.end; ++y) {
            uchar *value = pixels.ptr(y);
            // The idle byte of a coloured pixel is 255 and stays out of it.
            if (pixels.channels() == 1) {
                for (uchar *end = value + pixels.cols; value != end; ++value)
                    *value = curve[*value];
                continue;
            }
            for (uchar *end = value + 4 * pixels.cols; value != end; value += 4) {
                value[0] = curve[value[0]];
                value[1] = curve[value[1]];
                value[2] = curve[value[2]];
            }
        }
    });
    return image;
}

} // namespace scanengine
