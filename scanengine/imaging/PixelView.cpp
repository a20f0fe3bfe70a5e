#include "scanengine/imaging/PixelView.h"

#include <opencv2/core/hal/intrin.hpp>
#include <opencv2/core/utility.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace scanengine {
namespace {

constexpr double dotsPerMeterPerDpi = 1 / 0.0254;
constexpr double millimetersPerInch = 25.4;
/// Shorter sides show nothing.
constexpr int leastSide = 24;

int typeOf(const QImage &image)
{
    return image.format() == QImage::Format_Grayscale8 ? CV_8UC1 : CV_8UC4;
}

/// Adds the levels of `row` to `sums`.
void addRow(const uchar *row, std::vector<ushort> &sums)
{
    size_t i = 0;
    for (; i + 16 <= sums.size(); i += 16) {
        cv::v_uint16x8 low;
        cv::v_uint16x8 high;
        cv::v_expand(cv::v_load(row + i), low, high);
        cv::v_store(&sums[i], cv::v_load(&sums[i]) + low);
        cv::v_store(&sums[i + 8], cv::v_load(&sums[i + 8]) + high);
    }
    for (; i < sums.size(); ++i)
        sums[i] = ushort(sums[i] + row[i]);
}

/// One row of means from the sums of `factor` rows.
template <int Channels> void putMeans(const std::vector<ushort> &sums, int factor, cv::Mat row)
{
    const float share = 1.0F / float(factor * factor);
    const ushort *from = sums.data();
    uchar *to = row.data;
    for (int x = 0; x < row.cols; ++x, to += Channels) {
        std::array<int, Channels> sum{};
        for (int i = 0; i < factor; ++i, from += Channels) {
            for (size_t c = 0; c < Channels; ++c)
                sum[c] += from[c];
        }
        for (size_t c = 0; c < Channels; ++c)
            to[c] = uchar(float(sum[c]) * share + 0.5F);
    }
}

} // namespace

const cv::Mat pixelsOf(const QImage &image)
{
    return {image.height(), image.width(), typeOf(image), const_cast<uchar *>(image.constBits()),
            size_t(image.bytesPerLine())};
}

cv::Mat writablePixelsOf(QImage &image)
{
    return {image.height(), image.width(), typeOf(image), image.bits(),
            size_t(image.bytesPerLine())};
}

cv::Mat meansOf(const cv::Mat &pixels, int factor)
{
    if (factor == 1)
        return pixels.clone();
    cv::Mat result(pixels.rows / factor, pixels.cols / factor, pixels.type());
    cv::parallel_for_({0, result.rows}, [&](const cv::Range &range) {
        std::vector<ushort> sums(size_t(result.cols) * size_t(factor) * pixels.elemSize());
        for (int y = range.start; y < range.end; ++y) {
            std::fill(sums.begin(), sums.end(), ushort(0));
            for (int i = 0; i < factor; ++i)
                addRow(pixels.ptr(y * factor + i), sums);
            if (pixels.channels() == 1)
                putMeans<1>(sums, factor, result.row(y));
            else
                putMeans<4>(sums, factor, result.row(y));
        }
    });
    return result;
}

ReducedImage reduced(const QImage &image, double dpi)
{
    const double stated = std::max(1.0, double(image.dotsPerMeterX())) / dotsPerMeterPerDpi;
    const double pixels = double(image.width()) * image.height();
    // Whole factors alone treat all rows alike; a little short of one counts as it.
    const int factor = std::max({1, int(std::min(stated / dpi + 0.05, 100.0)),
                                 int(std::ceil(std::sqrt(pixels / maxReducedPixels)))});
    const cv::Size size(image.width() / factor, image.height() / factor);
    ReducedImage result;
    result.factor = factor;
    result.pixelsPerMm = stated / factor / millimetersPerInch;
    if (std::min(size.width, size.height) < leastSide)
        return result;
    const cv::Mat whole = pixelsOf(image)({0, 0, size.width * factor, size.height * factor});
    result.pixels = meansOf(whole, factor);
    return result;
}

} // namespace scanengine
