#include "pipeline/outline/Shape.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// Parts of the image's area.
constexpr double smallestShape = 0.015;
constexpr double mostSpecks = 0.01;
/// Parts of the area within the corners.
constexpr double emptiestShape = 0.9;
/// Of the pixels within the corners; a block of print or a frame is set for less, a sheet for more,
/// even where its print is of the ground's shade.
constexpr double leastSet = 0.65;
constexpr double secondShape = 0.15;

/// How far things around a shape may be a part of it, such as its shadow, in pixels.
constexpr int shadow = 9;

using Contour = std::vector<cv::Point>;

/// Where the sides before and after a side meet when they are extended over it.
struct Meeting {
    cv::Point2d at;
    double addedArea;
};

std::optional<Meeting> meeting(cv::Point2d before, cv::Point2d from, cv::Point2d to,
                               cv::Point2d after)
{
    const cv::Point2d in = from - before;
    const cv::Point2d out = to - after;
    const double sine = in.cross(out);
    if (std::abs(sine) < 1e-9)
        return std::nullopt;
    const double further = (to - from).cross(out) / sine;
    const double back = (to - from).cross(in) / sine;
    if (further < 0 || back < 0)
        return std::nullopt; // they part
    const cv::Point2d at = from + in * further;
    return Meeting{at, std::abs((from - at).cross(to - at)) / 2};
}

/// Which side is the cheapest to do without.
struct Removal {
    size_t side;
    Meeting meeting;
};

std::optional<Removal> cheapestRemoval(const std::vector<cv::Point2d> &hull)
{
    std::optional<Removal> best;
    const size_t n = hull.size();
    for (size_t i = 0; i < n; ++i) {
        const auto met =
            meeting(hull[(i + n - 1) % n], hull[i], hull[(i + 1) % n], hull[(i + 2) % n]);
        if (met && (!best || met->addedArea < best->meeting.addedArea))
            best = Removal{i, *met};
    }
    return best;
}

double areaOf(const PixelCorners &corners)
{
    return std::abs((corners[2] - corners[0]).cross(corners[3] - corners[1])) / 2;
}

/// Closes the gaps that print near an edge makes, and drops specks.
cv::Mat cleaned(const cv::Mat &mask)
{
    cv::Mat result;
    const cv::Mat small = cv::getStructuringElement(cv::MORPH_RECT, {3, 3});
    cv::morphologyEx(mask, result, cv::MORPH_OPEN, small);
    cv::morphologyEx(result, result, cv::MORPH_CLOSE,
                     cv::getStructuringElement(cv::MORPH_RECT, {7, 7}));
    return result;
}

Contour rounded(const PixelCorners &corners)
{
    Contour region;
    for (const cv::Point2d &corner : corners)
        region.emplace_back(cvRound(corner.x), cvRound(corner.y));
    return region;
}

/// Whether most of the region itself is set.
bool isSolid(const cv::Mat &mask, const Contour &region)
{
    cv::Mat inside = cv::Mat::zeros(mask.size(), CV_8UC1);
    cv::fillConvexPoly(inside, region, 255);
    return cv::countNonZero(inside & mask) > leastSet * cv::countNonZero(inside);
}

/// How many pixels are set further than a shadow away from the region.
int specksBeside(const cv::Mat &mask, const Contour &region)
{
    cv::Mat beside = mask.clone();
    cv::fillConvexPoly(beside, region, 0);
    cv::polylines(beside, region, true, 0, 2 * shadow);
    return cv::countNonZero(beside);
}

} // namespace

std::optional<PixelCorners> fourCorners(std::vector<cv::Point2d> hull)
{
    while (hull.size() > 4) {
        const std::optional<Removal> removal = cheapestRemoval(hull);
        if (!removal)
            return std::nullopt;
        hull[removal->side] = removal->meeting.at;
        hull.erase(hull.begin() + static_cast<std::ptrdiff_t>((removal->side + 1) % hull.size()));
    }
    if (hull.size() < 4)
        return std::nullopt;
    PixelCorners corners;
    std::ranges::copy(hull, corners.begin());
    return corners;
}

std::optional<PixelCorners> largestShape(const cv::Mat &mask)
{
    const cv::Mat clean = cleaned(mask);
    std::vector<Contour> contours;
    cv::findContours(clean, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
    const auto area = [](const Contour &contour) {
        return cv::contourArea(contour);
    };
    if (contours.empty())
        return std::nullopt;
    const auto largest = std::ranges::max_element(contours, {}, area);
    const double covered = area(*largest);
    if (covered < smallestShape * static_cast<double>(mask.total()))
        return std::nullopt;

    Contour hull;
    cv::convexHull(*largest, hull, true);
    // Contours run through the middles of the outermost pixels.
    const std::optional<PixelCorners> corners =
        fourCorners(std::vector<cv::Point2d>(hull.begin(), hull.end()));
    if (!corners || covered < emptiestShape * areaOf(*corners))
        return std::nullopt;
    const bool isAlone = std::ranges::none_of(contours, [&](const Contour &other) {
        return &other != &*largest && area(other) > secondShape * covered;
    });
    const Contour region = rounded(*corners);
    const double specks = specksBeside(clean, region);
    if (!isAlone || !isSolid(mask, region) ||
        specks > mostSpecks * static_cast<double>(mask.total()))
        return std::nullopt;
    return corners;
}

} // namespace velmor
