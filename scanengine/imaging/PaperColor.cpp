#include "scanengine/imaging/PaperColor.h"

#include "scanengine/imaging/PixelView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace scanengine {
namespace {

constexpr double dpi = 12;
/// Around the image, in pixels of the reduced one; farther away colours stay the same.
constexpr int margin = 24;
/// The image's outermost pixels show the lid's edge, in reduced pixels.
constexpr int inset = 1;

/// `colors` where they are known; elsewhere the nearest that is.
cv::Mat carriedOn(const cv::Mat &colors, const cv::Mat &known)
{
    cv::Mat distances;
    cv::Mat labels;
    cv::distanceTransform(~known, distances, labels, cv::DIST_L2, cv::DIST_MASK_5,
                          cv::DIST_LABEL_PIXEL);
    const size_t bytes = colors.elemSize();
    std::vector<const uchar *> nearest(known.total() + 1, colors.data);
    for (int y = 0; y < known.rows; ++y) {
        for (int x = 0; x < known.cols; ++x) {
            if (known.at<uchar>(y, x) != 0)
                nearest[size_t(labels.at<int>(y, x))] = colors.ptr(y) + size_t(x) * bytes;
        }
    }
    cv::Mat result(colors.size(), colors.type());
    for (int y = 0; y < known.rows; ++y) {
        for (int x = 0; x < known.cols; ++x)
            std::copy_n(nearest[size_t(labels.at<int>(y, x))], bytes,
                        result.ptr(y) + size_t(x) * bytes);
    }
    return result;
}

} // namespace

PaperColor::PaperColor(const QImage &image, const QPolygonF &shown)
{
    const double stated = image.dotsPerMeterX() * 0.0254;
    const int factor = std::clamp(int(std::max(stated / dpi, image.width() / 4000.0)), 1,
                                  std::min({256, image.width(), image.height()}));
    cv::Mat small = meansOf(pixelsOf(image), factor);
    // The lightest nearby: paper between letters.
    cv::dilate(small, small, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));

    cv::Mat known(small.size(), CV_8UC1, cv::Scalar(shown.isEmpty() ? 255 : 0));
    std::vector<cv::Point> points;
    for (const QPointF corner : shown)
        points.emplace_back(int(std::lround(corner.x() / factor)),
                            int(std::lround(corner.y() / factor)));
    if (!points.empty())
        cv::fillConvexPoly(known, points, 255);
    if (std::min(small.cols, small.rows) > 4 * inset + 2)
        cv::erode(known, known, cv::getStructuringElement(cv::MORPH_RECT, {5, 5}), {-1, -1}, 1,
                  cv::BORDER_CONSTANT, 0);
    if (cv::countNonZero(known) == 0)
        known = 255;

    cv::copyMakeBorder(small, small, margin, margin, margin, margin, cv::BORDER_REPLICATE);
    cv::copyMakeBorder(known, known, margin, margin, margin, margin, cv::BORDER_CONSTANT);
    m_colors = carriedOn(small, known);
    // Soft, so that no streak shows where the nearest place changes.
    cv::blur(m_colors, m_colors, {5, 5}, {-1, -1}, cv::BORDER_REPLICATE);
    m_factor = factor;
    m_margin = margin;
}

void PaperColor::put(QPointF at, uchar *pixel) const
{
    const int x = std::clamp(int(std::floor(at.x() / m_factor)) + m_margin, 0, m_colors.cols - 1);
    const int y = std::clamp(int(std::floor(at.y() / m_factor)) + m_margin, 0, m_colors.rows - 1);
    const size_t bytes = m_colors.elemSize();
    std::copy_n(m_colors.ptr(y) + size_t(x) * bytes, bytes, pixel);
}

} // namespace scanengine
