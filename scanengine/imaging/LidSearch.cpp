#include "scanengine/imaging/LidSearch.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace scanengine {
namespace {

/// What is nearer to the sides of the bed counts as touching them: scanners show a dark line there.
constexpr double bedSideMm = 2;
/// The least share of the bed that a visible piece of lid covers.
constexpr double leastLidShare = 0.002;
constexpr size_t mostSurfaces = 5;
/// Lids are neutral: the most that two channels of one differ.
constexpr double mostLidTint = 30;
/// The most that two pieces of one lid differ, in levels: light falls off towards the sides.
constexpr double mostLidDifference = 40;
/// An item is at least twice as wide. Letters, specks and hairs are not.
constexpr double leastItemRadiusMm = 4;
constexpr double leastSpeckMm = 1.3;

struct Surface {
    int label = 0;
    int area = 0;
    cv::Vec3d color;
};

double percentile(const cv::Mat &values, double share, double most)
{
    const int bins = 2048;
    const float range[] = {0, float(most)};
    const float *ranges[] = {range};
    cv::Mat histogram;
    cv::calcHist(&values, 1, nullptr, cv::noArray(), histogram, 1, &bins, ranges);
    double left = share * double(values.total());
    for (int i = 0; i < bins; ++i) {
        left -= double(histogram.at<float>(i));
        if (left <= 0)
            return most * (i + 0.5) / bins;
    }
    return most;
}

bool reachesSide(const cv::Mat &stats, int label, cv::Size size, double slack)
{
    const int *row = stats.ptr<int>(label);
    return row[cv::CC_STAT_LEFT] <= slack || row[cv::CC_STAT_TOP] <= slack ||
           row[cv::CC_STAT_LEFT] + row[cv::CC_STAT_WIDTH] >= size.width - slack ||
           row[cv::CC_STAT_TOP] + row[cv::CC_STAT_HEIGHT] >= size.height - slack;
}

double tint(const cv::Vec3d &color)
{
    return std::max({color[0], color[1], color[2]}) - std::min({color[0], color[1], color[2]});
}

std::vector<cv::Vec3d> meanColors(const cv::Mat &color, const cv::Mat &labels, const cv::Mat &stats)
{
    std::vector<cv::Vec3d> sums(size_t(stats.rows));
    for (int y = 0; y < labels.rows; ++y) {
        const int *label = labels.ptr<int>(y);
        const auto *pixel = color.ptr<cv::Vec3f>(y);
        for (int x = 0; x < labels.cols; ++x)
            sums[size_t(label[x])] += cv::Vec3d(pixel[x]);
    }
    for (int i = 0; i < stats.rows; ++i)
        sums[size_t(i)] /= std::max(1, stats.at<int>(i, cv::CC_STAT_AREA));
    return sums;
}

/// The plain surfaces that could be lid, largest first.
std::vector<Surface> surfaces(const BedView &bed, const cv::Mat &labels, const cv::Mat &stats)
{
    const std::vector<cv::Vec3d> colors = meanColors(bed.color, labels, stats);
    std::vector<Surface> found;
    for (int label = 1; label < stats.rows; ++label) {
        const int area = stats.at<int>(label, cv::CC_STAT_AREA);
        if (area >= leastLidShare * double(labels.total()) &&
            reachesSide(stats, label, labels.size(), bedSideMm * bed.pixelsPerMm) &&
            tint(colors[size_t(label)]) <= mostLidTint)
            found.push_back({label, area, colors[size_t(label)]});
    }
    std::sort(found.begin(), found.end(),
              [](const Surface &a, const Surface &b) { return a.area > b.area; });
    if (found.size() > mostSurfaces)
        found.resize(mostSurfaces);
    return found;
}

bool areAlike(const std::vector<Surface> &found, unsigned subset)
{
    for (size_t a = 0; a < found.size(); ++a) {
        for (size_t b = a + 1; b < found.size(); ++b) {
            const bool areBoth = (subset >> a & 1) != 0 && (subset >> b & 1) != 0;
            if (areBoth &&
                cv::norm(found[a].color - found[b].color, cv::NORM_INF) > mostLidDifference)
                return false;
        }
    }
    return true;
}

cv::Mat disc(int radius)
{
    return cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * radius + 1, 2 * radius + 1});
}

/// Parts what isn't lid into items and specks.
void sortThings(LidGuess &guess, double pixelsPerMm, int barrier)
{
    const cv::Mat things = ~guess.lid;
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centers;
    const int count = cv::connectedComponentsWithStats(things, labels, stats, centers, 8, CV_32S);
    for (int label = 1; label < count; ++label) {
        const int *row = stats.ptr<int>(label);
        const cv::Rect box(row[cv::CC_STAT_LEFT], row[cv::CC_STAT_TOP], row[cv::CC_STAT_WIDTH],
                           row[cv::CC_STAT_HEIGHT]);
        const double sizeMm =
            std::max(0, std::max(box.width, box.height) - 2 * barrier) / pixelsPerMm;
        std::vector<std::vector<cv::Point>> contours;
        double radius = 0;
        if (sizeMm >= 2 * leastItemRadiusMm) {
            cv::Mat alone;
            cv::copyMakeBorder(labels(box) == label, alone, 1, 1, 1, 1, cv::BORDER_CONSTANT, 0);
            cv::findContours(alone, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_NONE,
                             box.tl() - cv::Point(1, 1));
            // Its holes count as parts of it.
            cv::drawContours(alone, contours, -1, 255, cv::FILLED, cv::LINE_8, cv::noArray(), 1,
                             cv::Point(1, 1) - box.tl());
            cv::Mat distance;
            cv::distanceTransform(alone, distance, cv::DIST_L2, 3);
            cv::minMaxLoc(distance, nullptr, &radius);
        }
        if (radius - barrier >= leastItemRadiusMm * pixelsPerMm) {
            guess.items.push_back(contours.front());
            continue;
        }
        const double slack = bedSideMm * pixelsPerMm;
        const bool isAtSide = box.x + box.width <= slack || box.y + box.height <= slack ||
                              box.x >= labels.cols - slack || box.y >= labels.rows - slack;
        if (sizeMm >= leastSpeckMm && !isAtSide) {
            ++guess.specks;
            guess.largestSpeck = std::max(guess.largestSpeck, sizeMm);
        }
    }
}

} // namespace

BedView bedView(const ReducedImage &image)
{
    const cv::Mat &pixels = image.pixels;
    BedView bed;
    bed.pixelsPerMm = image.pixelsPerMm;
    cv::Mat color;
    cv::cvtColor(pixels, color, pixels.channels() == 1 ? cv::COLOR_GRAY2BGR : cv::COLOR_BGRA2BGR);
    color.convertTo(bed.color, CV_32FC3);
    cv::GaussianBlur(bed.color, bed.color, {5, 5}, 0.9, 0.9, cv::BORDER_REPLICATE);

    std::vector<cv::Mat> channels;
    cv::split(bed.color, channels);
    if (pixels.channels() == 1)
        channels.resize(1);
    for (const cv::Mat &channel : channels) {
        cv::Mat along;
        cv::Mat down;
        cv::Mat slope;
        cv::Sobel(channel, along, CV_32F, 1, 0, 3, 0.125, 0, cv::BORDER_REPLICATE);
        cv::Sobel(channel, down, CV_32F, 0, 1, 3, 0.125, 0, cv::BORDER_REPLICATE);
        cv::magnitude(along, down, slope);
        bed.slope = bed.slope.empty() ? slope : cv::Mat(cv::max(bed.slope, slope));
    }
    // Of a slope that is mere noise a third of the pixels lie below 0.9 standard deviations.
    const double deviation = percentile(bed.slope, 0.33, 64) / 0.9;
    bed.grain = std::max(0.8, 4.5 * deviation);
    return bed;
}

cv::Vec3f colorAt(const BedView &bed, cv::Point2d at)
{
    const cv::Mat &color = bed.color;
    at -= cv::Point2d(0.5, 0.5);
    const int x = std::clamp(int(std::floor(at.x)), 0, color.cols - 2);
    const int y = std::clamp(int(std::floor(at.y)), 0, color.rows - 2);
    const float u = std::clamp(float(at.x - x), 0.0F, 1.0F);
    const float v = std::clamp(float(at.y - y), 0.0F, 1.0F);
    const auto *upper = color.ptr<cv::Vec3f>(y) + x;
    const auto *lower = color.ptr<cv::Vec3f>(y + 1) + x;
    return (upper[0] * (1 - u) + upper[1] * u) * (1 - v) + (lower[0] * (1 - u) + lower[1] * u) * v;
}

std::vector<LidGuess> lidGuesses(const BedView &bed, double gapMm)
{
    const int radius = std::max(1, int(std::lround(gapMm / 2 * bed.pixelsPerMm)));
    const cv::Mat edges = bed.slope > bed.grain;
    cv::Mat plain;
    cv::dilate(edges, plain, disc(radius));
    plain = ~plain;
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centers;
    cv::connectedComponentsWithStats(plain, labels, stats, centers, 4, CV_32S);
    const std::vector<Surface> found = surfaces(bed, labels, stats);

    std::vector<LidGuess> guesses;
    for (unsigned subset = 1; subset < 1U << found.size(); ++subset) {
        if (!areAlike(found, subset))
            continue;
        LidGuess guess;
        guess.lid = cv::Mat(labels.size(), CV_8UC1, cv::Scalar(0));
        for (size_t i = 0; i < found.size(); ++i) {
            if ((subset >> i & 1) != 0)
                guess.lid.setTo(255, labels == found[i].label);
        }
        cv::dilate(guess.lid, guess.lid, disc(radius));
        sortThings(guess, bed.pixelsPerMm, 2);
        if (!guess.items.empty())
            guesses.push_back(std::move(guess));
    }
    return guesses;
}

} // namespace scanengine
