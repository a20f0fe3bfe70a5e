#include "pipeline/Perspective.h"

#include "pipeline/EncodedImage.h"
#include "pipeline/ImageView.h"
#include "pipeline/RawStore.h"

#include <QLineF>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <exception>

// Corners count from the image's edge, where OpenCV counts from the middle of the first pixel: half
// a pixel less. The result is made in tiles, each from the part of the source under it, because
// OpenCV takes no image with a side of 32,768 pixels or more.

namespace velmor {

namespace {

using Corners = std::array<QPointF, 4>;

constexpr int tileSide = 1024; // pixels
/// How far around a point the interpolation looks, in pixels, with one more for rounding.
constexpr int reach = 3;
/// OpenCV tells places apart by 1/32 pixel.
constexpr double samePlace = 1 / 64.0;

Corners inPixels(const Quad &quad, QSize size)
{
    Corners corners;
    std::ranges::transform(quad.corners, corners.begin(), [size](QPointF corner) {
        return QPointF(corner.x() * size.width(), corner.y() * size.height());
    });
    return corners;
}

double length(QPointF from, QPointF to)
{
    return QLineF(from, to).length();
}

QSize straightSize(const Corners &c)
{
    const double width = std::max(length(c[0], c[1]), length(c[3], c[2]));
    const double height = std::max(length(c[0], c[3]), length(c[1], c[2]));
    return {std::max(1, static_cast<int>(std::lround(width))),
            std::max(1, static_cast<int>(std::lround(height)))};
}

/// The rectangle of whole pixels that the corners mark, if they mark one that isn't mirrored.
std::optional<QRect> wholePixels(const Corners &corners)
{
    const QRect rect(corners[0].toPoint(), corners[2].toPoint() - QPoint(1, 1));
    const QRectF exact(rect);
    const Corners exactCorners{exact.topLeft(), exact.topRight(), exact.bottomRight(),
                               exact.bottomLeft()};
    const bool same = std::ranges::equal(
        corners, exactCorners, [](QPointF a, QPointF b) { return length(a, b) < samePlace; });
    return same && rect.isValid() ? std::optional(rect) : std::nullopt;
}

/// The matrix from the pixel centres of a rectangle of `size` to those of the region.
cv::Matx33d toSource(const Corners &corners, QSize size)
{
    const auto w = static_cast<float>(size.width());
    const auto h = static_cast<float>(size.height());
    std::array<cv::Point2f, 4> from{
        {{0, 0}, {w, 0}, {w, h}, {0, h}}
    };
    std::array<cv::Point2f, 4> to;
    const cv::Point2f half(0.5F, 0.5F);
    for (size_t i = 0; i < corners.size(); ++i) {
        from[i] -= half;
        to[i] =
            cv::Point2f(static_cast<float>(corners[i].x()), static_cast<float>(corners[i].y())) -
            half;
    }
    return cv::getPerspectiveTransform(from.data(), to.data());
}

cv::Point2d mapped(const cv::Matx33d &matrix, cv::Point point)
{
    const cv::Vec3d at = matrix * cv::Vec3d(point.x, point.y, 1);
    return {at[0] / at[2], at[1] / at[2]};
}

/// The part of the source that the pixels of `tile` are interpolated from.
cv::Rect under(const cv::Rect &tile, const cv::Matx33d &matrix, cv::Size source)
{
    const cv::Point end = tile.br() - cv::Point(1, 1);
    const std::array corners{mapped(matrix, tile.tl()), mapped(matrix, {end.x, tile.y}),
                             mapped(matrix, end), mapped(matrix, {tile.x, end.y})};
    const auto [left, right] = std::ranges::minmax(corners, {}, &cv::Point2d::x);
    const auto [top, bottom] = std::ranges::minmax(corners, {}, &cv::Point2d::y);
    const cv::Point first(cvFloor(left.x) - reach, cvFloor(top.y) - reach);
    const cv::Point last(cvCeil(right.x) + reach, cvCeil(bottom.y) + reach);
    return cv::Rect(first, last) & cv::Rect({0, 0}, source);
}

void warpTile(const cv::Mat &source, cv::Mat result, const cv::Rect &tile,
              const cv::Matx33d &matrix)
{
    const cv::Rect part = under(tile, matrix, source.size());
    const cv::Matx33d fromTile(1, 0, tile.x, 0, 1, tile.y, 0, 0, 1);
    const cv::Matx33d toPart(1, 0, -part.x, 0, 1, -part.y, 0, 0, 1);
    cv::warpPerspective(source(part), result, toPart * matrix * fromTile, tile.size(),
                        cv::INTER_CUBIC | cv::WARP_INVERSE_MAP, cv::BORDER_REPLICATE);
}

std::optional<QImage> warped(const QImage &paper, const Corners &corners, QSize size)
{
    QImage result(size, paper.format());
    if (paper.isNull() || result.isNull())
        return std::nullopt;
    const int type = paper.format() == QImage::Format_Grayscale8 ? CV_8UC1 : CV_8UC4;
    const cv::Mat source = imageView(paper, type);
    const cv::Mat target = imageView(result, type);
    const cv::Matx33d matrix = toSource(corners, size);
    const cv::Rect whole({0, 0}, target.size());
    for (int y = 0; y < size.height(); y += tileSide) {
        for (int x = 0; x < size.width(); x += tileSide) {
            const cv::Rect tile = cv::Rect(x, y, tileSide, tileSide) & whole;
            warpTile(source, target(tile), tile, matrix);
        }
    }
    return result;
}

} // namespace

std::optional<QImage> correctPerspective(const QImage &source, const Quad &quad)
{
    if (source.isNull() || !isUsable(quad))
        return std::nullopt;
    try {
        const Corners corners = inPixels(quad, source.size());
        if (const std::optional<QRect> rect = wholePixels(corners)) {
            QImage part = paperImage(source.copy(*rect));
            return part.isNull() ? std::nullopt : std::optional(std::move(part));
        }
        const QSize size = straightSize(corners);
        if (qint64{size.width()} * size.height() > RawStore::maxPixels)
            return std::nullopt;
        return warped(paperImage(source), corners, size);
    } catch (const std::exception &) { // OpenCV's own, and want of memory
        return std::nullopt;
    }
}

} // namespace velmor
