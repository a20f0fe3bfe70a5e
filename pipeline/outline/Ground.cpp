#include "pipeline/outline/Ground.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// The rim's width, as a part of the image's shorter side.
constexpr double rimWidth = 0.02;
/// A rim whose two shades are further apart than this, in steps of 255, may show two things. It
/// shows one if its grain is a small part of that, once the fall of the light is taken out.
constexpr double twoThings = 12;
constexpr double evenRim = 1 / 6.0;
/// A shade of which there is less isn't the ground, as a part of the rim.
constexpr double leastOfRim = 0.15;
/// What slopes weigh against the samples: a rim on one side alone tells of none across the image.
constexpr double steadiness = 0.003;
/// The least grain, since values are whole numbers.
constexpr double leastGrain = 0.4;

struct Sample {
    cv::Vec3d at; ///< 1, and the place from -1 to 1, to the right and downwards.
    cv::Vec3b colour;
    double light; ///< The mean of the channels.
};

cv::Vec3d placeOf(int x, int y, cv::Size image)
{
    return {1, 2.0 * x / image.width - 1, 2.0 * y / image.height - 1};
}

std::vector<Sample> rimOf(const cv::Mat &image)
{
    const int width = std::max(2, cvRound(rimWidth * std::min(image.cols, image.rows)));
    std::vector<Sample> rim;
    for (int y = 0; y < image.rows; ++y) {
        const bool whole = y < width || y >= image.rows - width;
        for (int x = 0; x < image.cols; ++x) {
            if (!whole && x == width)
                x = std::max(x, image.cols - width);
            const auto colour = image.at<cv::Vec3b>(y, x);
            rim.push_back(
                {placeOf(x, y, image.size()), colour, (colour[0] + colour[1] + colour[2]) / 3.0});
        }
    }
    return rim;
}

/// The light between the two shades of the rim that are furthest apart (Otsu's threshold), and how
/// far apart their means are.
struct Shades {
    double border;
    double distance;
};

Shades shadesOf(const std::vector<Sample> &rim)
{
    cv::Mat lights(1, static_cast<int>(rim.size()), CV_8UC1);
    std::ranges::transform(rim, lights.ptr<uchar>(), [](const Sample &sample) {
        return static_cast<uchar>(std::lround(sample.light));
    });
    cv::Mat above;
    const double border = cv::threshold(lights, above, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    if (cv::countNonZero(above) == 0 || cv::countNonZero(above) == lights.cols)
        return {border, 0};
    return {border, cv::mean(lights, above)[0] - cv::mean(lights, above == 0)[0]};
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// The colour at a place: a plane for each channel; the rows are its height in the middle, and its
/// slopes to the right and downwards.
using Planes = cv::Matx33d;

Planes planesThrough(const std::vector<Sample> &samples)
{
    const double stiffness = steadiness * static_cast<double>(samples.size());
    cv::Matx33d squares(0, 0, 0, 0, stiffness, 0, 0, 0, stiffness);
    Planes sums = Planes::zeros();
    for (const Sample &sample : samples) {
        squares += sample.at * sample.at.t();
        sums += sample.at * cv::Vec3d(sample.colour).t();
    }
    return squares.inv(cv::DECOMP_SVD) * sums;
}

double distance(const Planes &planes, const Sample &sample)
{
    const cv::Vec3d ground = planes.t() * sample.at;
    return cv::norm(cv::Vec3d(sample.colour) - ground, cv::NORM_INF);
}

cv::Mat differences(const cv::Mat &image, const Planes &planes)
{
    cv::Mat result(image.size(), CV_8UC1);
    for (int y = 0; y < image.rows; ++y) {
        const auto *from = image.ptr<cv::Vec3b>(y);
        auto *to = result.ptr<uchar>(y);
        cv::Vec3d ground = planes.t() * placeOf(0, y, image.size());
        const cv::Vec3d step = planes.t() * cv::Vec3d(0, 2.0 / image.cols, 0);
        for (int x = 0; x < image.cols; ++x, ground += step) {
            const double most =
                std::max({std::abs(from[x][0] - ground[0]), std::abs(from[x][1] - ground[1]),
                          std::abs(from[x][2] - ground[2])});
            to[x] = static_cast<uchar>(std::min(most + 0.5, 255.0));
        }
    }
    return result;
}

/// Fits planes, leaving out what lies far from them, as the corner of a document would.
Ground groundOf(const cv::Mat &image, std::vector<Sample> samples)
{
    Planes planes = planesThrough(samples);
    double grain = leastGrain;
    for (int round = 0; round < 3; ++round) {
        std::vector<double> distances;
        for (const Sample &sample : samples)
            distances.push_back(distance(planes, sample));
        grain = std::max(leastGrain, median(distances));
        std::erase_if(samples, [&](const Sample &s) { return distance(planes, s) > 4 * grain; });
        planes = planesThrough(samples);
    }
    return {differences(image, planes), grain};
}

} // namespace

std::vector<Ground> possibleGrounds(const cv::Mat &image)
{
    const std::vector<Sample> rim = rimOf(image);
    const Shades shades = shadesOf(rim);
    Ground even = groundOf(image, rim);
    if (shades.distance < twoThings || even.grain < evenRim * shades.distance)
        return {even};
    std::vector<Sample> most;
    std::vector<Sample> least;
    for (const Sample &sample : rim)
        (sample.light > shades.border ? least : most).push_back(sample);
    if (least.size() > most.size())
        std::swap(least, most);
    std::vector<Ground> grounds{groundOf(image, most)};
    if (static_cast<double>(least.size()) > leastOfRim * static_cast<double>(rim.size()))
        grounds.push_back(groundOf(image, least));
    grounds.push_back(std::move(even));
    return grounds;
}

} // namespace velmor
