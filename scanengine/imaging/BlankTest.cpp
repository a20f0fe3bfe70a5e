#include "scanengine/imaging/BlankTest.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace scanengine {
namespace {

// Lengths in millimetres.
constexpr double rim = 4; ///< What lies wholly within isn't on the sheet.
constexpr double largestSpeck = 1;
constexpr double leastHole = 4.5;
constexpr double largestHole = 8.5;
constexpr double farthestHole = 20; ///< Of its middle from the next side.
constexpr double leastStaple = 4;
constexpr double longestStaple = 16;
constexpr double farthestStaple = 25; ///< From two sides.
constexpr double thinnestLine = 1.2;  ///< A staple's and a fold's width at most.
/// A fold goes over this part of a side at least.
constexpr double leastFold = 0.6;
/// Area without paper that is a picture, in square millimetres.
constexpr double leastPicture = 30;

/// A connected mark; lengths in millimetres.
struct Mark {
    cv::Rect2d box;
    std::vector<cv::Point2d> points;
    bool isWeak = false;

    [[nodiscard]] double extent() const { return std::max(box.width, box.height); }
};

double distanceToSide(cv::Point2d at, cv::Size2d page)
{
    return std::min({at.x, at.y, page.width - at.x, page.height - at.y});
}

bool isInRim(const Mark &mark, cv::Size2d page)
{
    return mark.box.x + mark.box.width < rim || mark.box.y + mark.box.height < rim ||
           mark.box.x > page.width - rim || mark.box.y > page.height - rim;
}

/// A ring or an arc of one: the edge of a hole.
bool isHole(const Mark &mark, cv::Size2d page)
{
    const double size = mark.extent();
    if (size < leastHole || size > largestHole)
        return false;
    if (std::min(mark.box.width, mark.box.height) < 0.75 * size)
        return false;
    const cv::Point2d middle(mark.box.x + mark.box.width / 2, mark.box.y + mark.box.height / 2);
    if (distanceToSide(middle, page) > farthestHole)
        return false;
    const auto isOnRing = [&](cv::Point2d point) {
        const double radius = std::hypot(point.x - middle.x, point.y - middle.y);
        return radius > 0.3 * size && radius < 0.6 * size;
    };
    const auto onRing = std::count_if(mark.points.begin(), mark.points.end(), isOnRing);
    return double(onRing) >= 0.9 * double(mark.points.size());
}

/// How far the points of `mark` lie from its main axis on average, times four: a line's width.
double widthOf(const Mark &mark)
{
    cv::Point2d mean(0, 0);
    for (const cv::Point2d &point : mark.points)
        mean += point;
    mean *= 1.0 / double(mark.points.size());
    double xx = 0;
    double yy = 0;
    double xy = 0;
    for (const cv::Point2d &point : mark.points) {
        const cv::Point2d from = point - mean;
        xx += from.x * from.x;
        yy += from.y * from.y;
        xy += from.x * from.y;
    }
    const double least = (xx + yy - std::hypot(xx - yy, 2 * xy)) / 2;
    return 4 * std::sqrt(std::max(0.0, least) / double(mark.points.size()));
}

bool isStaple(const Mark &mark, cv::Size2d page)
{
    const double length = std::hypot(mark.box.width, mark.box.height);
    const cv::Point2d middle(mark.box.x + mark.box.width / 2, mark.box.y + mark.box.height / 2);
    const double fromSide = std::min(middle.x, page.width - middle.x);
    const double fromEnd = std::min(middle.y, page.height - middle.y);
    return !mark.isWeak && length >= leastStaple && length <= longestStaple &&
           std::max(fromSide, fromEnd) <= farthestStaple && widthOf(mark) <= thinnestLine;
}

bool isFold(const Mark &mark, cv::Size2d page)
{
    const bool isAcross =
        mark.box.width >= leastFold * page.width || mark.box.height >= leastFold * page.height;
    return mark.isWeak && isAcross && widthOf(mark) <= thinnestLine;
}

bool isContent(const Mark &mark, cv::Size2d page)
{
    return mark.extent() > largestSpeck && !isInRim(mark, page) && !isHole(mark, page) &&
           !isStaple(mark, page) && !isFold(mark, page);
}

std::vector<Mark> marksOf(const PageSurvey &survey)
{
    // Pencil skips over the paper's grain.
    cv::Mat joined;
    cv::dilate(survey.strokes, joined, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    cv::Mat labels;
    const int count = cv::connectedComponents(joined, labels, 8);
    std::vector<Mark> marks(size_t(count - 1));
    for (Mark &mark : marks)
        mark.isWeak = true;
    for (int y = 0; y < labels.rows; ++y) {
        for (int x = 0; x < labels.cols; ++x) {
            const uchar stroke = survey.strokes.at<uchar>(y, x);
            if (stroke == 0)
                continue;
            Mark &mark = marks[size_t(labels.at<int>(y, x) - 1)];
            mark.points.emplace_back(x / survey.pixelsPerMm, y / survey.pixelsPerMm);
            mark.isWeak = mark.isWeak && stroke == weakStroke;
        }
    }
    for (Mark &mark : marks) {
        double left = 1e9;
        double top = 1e9;
        double right = 0;
        double bottom = 0;
        for (const cv::Point2d &point : mark.points) {
            left = std::min(left, point.x);
            right = std::max(right, point.x);
            top = std::min(top, point.y);
            bottom = std::max(bottom, point.y);
        }
        const double pixel = 1 / survey.pixelsPerMm;
        mark.box = {left, top, right - left + pixel, bottom - top + pixel};
    }
    return marks;
}

/// Whether a picture covers the paper somewhere, away from the rim.
bool showsPicture(const PageSurvey &survey, cv::Size2d page)
{
    const cv::Mat pictures = survey.paper.isPaper == 0;
    const double cell = page.width / pictures.cols;
    cv::Mat solid;
    cv::morphologyEx(pictures, solid, cv::MORPH_OPEN,
                     cv::getStructuringElement(cv::MORPH_RECT, {5, 5}));
    const int edge = int(std::ceil(2 * rim / cell));
    const cv::Rect inside(edge, edge, solid.cols - 2 * edge, solid.rows - 2 * edge);
    return inside.width > 0 && inside.height > 0 &&
           cv::countNonZero(solid(inside)) * cell * cell >= leastPicture;
}

} // namespace

bool isBlank(const PageSurvey &survey)
{
    if (!survey.paper.exists)
        return false;
    const cv::Size2d page(survey.pixels.cols / survey.pixelsPerMm,
                          survey.pixels.rows / survey.pixelsPerMm);
    if (showsPicture(survey, page))
        return false;
    const std::vector<Mark> marks = marksOf(survey);
    return std::none_of(marks.begin(), marks.end(),
                        [&](const Mark &mark) { return isContent(mark, page); });
}

} // namespace scanengine
