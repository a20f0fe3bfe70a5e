#include "pipeline/PageOutline.h"

#include "pipeline/EncodedImage.h"
#include "pipeline/ImageView.h"
#include "pipeline/outline/Ground.h"
#include "pipeline/outline/Shape.h"
#include "pipeline/outline/Sides.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <exception>

// The rim of the image tells what the document lies on. What differs from that, on an image reduced
// to a few hundred pixels, is a shape whose hull has four corners, roughly. On the image itself the
// sides are then found exactly. What doesn't come out as a sheet at any of these steps is dropped:
// a proposal that is wrong is worse than none.

namespace velmor {

namespace {

/// Longer side, in pixels, of the image on which the shape is found.
constexpr double roughSide = 600;
/// How far the shape may be off, as a part of the image's longer side.
constexpr double roughReach = 0.014;
constexpr double exactReach = 0.005;
/// Above this many times the ground's grain, and this many steps of 255, isn't the ground.
constexpr double grains = 6;
constexpr double leastDifference = 2.5;
/// A corner nearer to the image's own than this part of its longer side is there.
constexpr double atCorner = 0.02;
/// The sheet as a photo shows it: how unequal opposite sides may be, and cosines at its corners.
constexpr double leastSideRatio = 0.6;
constexpr double sharpestCorner = 0.5;

cv::Mat coloursOf(const QImage &image)
{
    const QImage paper = paperImage(image);
    cv::Mat colours;
    if (paper.format() == QImage::Format_Grayscale8)
        cv::cvtColor(imageView(paper, CV_8UC1), colours, cv::COLOR_GRAY2BGR);
    else
        cv::cvtColor(imageView(paper, CV_8UC4), colours, cv::COLOR_BGRA2BGR);
    return colours;
}

/// Where `ground` isn't, the surest first: by the difference that parts the image best, and by the
/// least that isn't grain.
std::vector<cv::Mat> masksOf(const Ground &ground)
{
    cv::Mat parted;
    const double best =
        cv::threshold(ground.difference, parted, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    const double least = std::max(leastDifference, grains * ground.grain);
    std::vector<cv::Mat> masks;
    if (best >= least)
        masks.push_back(parted);
    masks.push_back(ground.difference > least);
    return masks;
}

bool looksLikeASheet(const PixelCorners &corners)
{
    std::array<cv::Point2d, 4> sides;
    for (size_t i = 0; i < sides.size(); ++i)
        sides[i] = corners[(i + 1) % 4] - corners[i];
    for (size_t i = 0; i < sides.size(); ++i) {
        const double side = cv::norm(sides[i]);
        const double next = cv::norm(sides[(i + 1) % 4]);
        const double opposite = cv::norm(sides[(i + 2) % 4]);
        if (side < leastSideRatio * opposite ||
            std::abs(sides[i].dot(sides[(i + 1) % 4])) > sharpestCorner * side * next)
            return false;
    }
    return true;
}

bool isWholeImage(const PixelCorners &corners, cv::Size image)
{
    const double most = atCorner * std::max(image.width, image.height);
    return std::ranges::all_of(corners, [&](cv::Point2d c) {
        return std::min(c.x, image.width - c.x) < most && std::min(c.y, image.height - c.y) < most;
    });
}

Quad quadOf(const PixelCorners &corners, cv::Size image)
{
    std::array<QPointF, 4> points;
    std::ranges::transform(corners, points.begin(), [image](cv::Point2d corner) {
        return QPointF(std::clamp(corner.x / image.width, 0.0, 1.0),
                       std::clamp(corner.y / image.height, 0.0, 1.0));
    });
    return orderQuad(points);
}

std::optional<Quad> outlineOf(const cv::Mat &mask, const cv::Mat &image)
{
    std::optional<PixelCorners> corners = largestShape(mask);
    if (!corners)
        return std::nullopt;
    for (cv::Point2d &corner : *corners) {
        corner.x = (corner.x + 0.5) * image.cols / mask.cols;
        corner.y = (corner.y + 0.5) * image.rows / mask.rows;
    }
    const double side = std::max(image.cols, image.rows);
    corners = exactCorners(image, *corners, roughReach * side);
    if (corners)
        corners = exactCorners(image, *corners, exactReach * side);
    if (!corners || !looksLikeASheet(*corners) || isWholeImage(*corners, image.size()))
        return std::nullopt;
    const Quad quad = quadOf(*corners, image.size());
    return isUsable(quad) ? std::optional(quad) : std::nullopt;
}

} // namespace

std::optional<Quad> findPageOutline(const QImage &base)
{
    if (std::min(base.width(), base.height()) < 32)
        return std::nullopt;
    try {
        const cv::Mat image = coloursOf(base);
        const double scale = std::min(1.0, roughSide / std::max(image.cols, image.rows));
        cv::Mat small;
        cv::resize(image, small, {}, scale, scale, cv::INTER_AREA);
        for (const Ground &ground : possibleGrounds(small)) {
            for (const cv::Mat &mask : masksOf(ground)) {
                if (const std::optional<Quad> quad = outlineOf(mask, image))
                    return quad;
            }
        }
        return std::nullopt;
    } catch (const std::exception &) { // OpenCV's own, and want of memory
        return std::nullopt;
    }
}

} // namespace velmor
