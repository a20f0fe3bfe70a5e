#include "scanengine/imaging/PaperField.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

// A closing swallows strokes, so that what is left of the page is areas. Paper is then what can be
// reached from its brightest large area without stepping over an edge: shadows come on slowly,
// photographs and printed boxes begin at an edge.

namespace scanengine {
namespace {

constexpr double cellMm = 0.68;
/// Widest stroke that still lies on paper instead of covering it.
constexpr double widestStrokeMm = 9;
/// The strip along the page's edges where the light falls off steeply.
constexpr double edgeMm = 6;

/// A step between neighbours that paper doesn't make, as a part of its lightness.
constexpr double leastStep = 0.06;
constexpr double leastStepAtEdge = 0.22;
/// Darkest paper, of 255, and the darkest shadow on it, as a part of the paper's lightness.
constexpr int darkestPaper = 90;
constexpr double darkestShadow = 0.4;
/// How far the channels of paper may lie apart: past it lie coloured card and skies.
constexpr double strongestTint = 70;
/// How far a shadow may change the colour of paper, as a part of its lightness.
constexpr double leastColorChange = 0.1;

/// A picture as light as paper at its edge gives itself away where it darkens, away from the page's
/// sides, by more than this within so many millimetres; it then reaches as far as it is darker.
constexpr double pictureDarkness = 0.12;
constexpr double pictureRise = 0.035;
constexpr double pictureReachMm = 25;
constexpr double sideShadowMm = 12;

/// The part of a page that paper covers at least, and of the strips along three of its sides: a
/// photograph up to the edges may have a sky as light and even as paper, but not all around.
constexpr double leastPaper = 0.06;
constexpr double leastOfSide = 0.5;

cv::Mat box(int side)
{
    return cv::getStructuringElement(cv::MORPH_RECT, {side, side});
}

int oddCells(double mm)
{
    return 2 * int(std::lround(mm / cellMm / 2)) + 1;
}

cv::Mat withoutIdleChannel(const cv::Mat &image)
{
    cv::Mat result = image;
    if (image.channels() == 4)
        cv::cvtColor(image, result, cv::COLOR_BGRA2BGR);
    return result;
}

/// The areas of a page: a closing that follows shadows right up to the edges.
cv::Mat areasOf(const cv::Mat &cells)
{
    const int side = oddCells(widestStrokeMm);
    cv::Mat padded;
    cv::copyMakeBorder(cells, padded, side, side, side, side, cv::BORDER_REPLICATE);
    cv::morphologyEx(padded, padded, cv::MORPH_CLOSE, box(side));
    return padded({side, side, cells.cols, cells.rows}).clone();
}

cv::Mat largestChannel(const cv::Mat &image)
{
    if (image.channels() == 1)
        return image;
    std::array<cv::Mat, 3> planes;
    cv::split(image, planes.data());
    return cv::max(planes[0], cv::max(planes[1], planes[2]));
}

/// Cells from which no neighbour differs by a step.
cv::Mat smoothCells(const cv::Mat &areas, const cv::Mat &lightness)
{
    cv::Mat most;
    cv::Mat least;
    cv::dilate(areas, most, box(3));
    cv::erode(areas, least, box(3));
    const cv::Mat steps = largestChannel(most - least);
    cv::Mat limits(lightness.size(), CV_8UC1);
    lightness.convertTo(limits, CV_8U, leastStepAtEdge);
    const int edge = oddCells(edgeMm);
    const cv::Rect inside(edge, edge, lightness.cols - 2 * edge, lightness.rows - 2 * edge);
    if (inside.width > 0 && inside.height > 0)
        lightness(inside).convertTo(limits(inside), CV_8U, leastStep);
    cv::Mat smooth = steps <= limits;
    // Gaps in an edge don't let the paper in.
    cv::erode(smooth, smooth, box(3));
    return smooth;
}

/// The lightness of the brightest large area, or 0.
int paperLevel(const cv::Mat &lightness, const cv::Mat &smooth)
{
    std::array<int, 256> histogram{};
    int total = 0;
    for (int y = 0; y < lightness.rows; ++y) {
        for (int x = 0; x < lightness.cols; ++x) {
            if (smooth.at<uchar>(y, x) != 0) {
                ++histogram[lightness.at<uchar>(y, x)];
                ++total;
            }
        }
    }
    constexpr int reach = 6;
    int best = 0;
    int bestCount = 0;
    for (int level = 255; level >= darkestPaper; --level) {
        int count = 0;
        for (int i = std::max(0, level - reach); i <= std::min(255, level + reach); ++i)
            count += histogram[size_t(i)];
        // A darker area has to be much larger to be the paper instead.
        if (count > bestCount * 1.5 || (count > bestCount && level > best - 2 * reach)) {
            best = level;
            bestCount = count;
        }
    }
    return bestCount * 20 >= total ? best : 0;
}

/// Cells whose colour is that of `paper`, lit less or as much.
cv::Mat coloredAs(const cv::Scalar &paper, const cv::Mat &areas)
{
    std::vector<cv::Mat> shares(size_t(areas.channels()));
    cv::split(areas, shares);
    for (size_t i = 0; i < shares.size(); ++i)
        shares[i].convertTo(shares[i], CV_32F, 1 / std::max(1.0, paper[int(i)]));
    cv::Mat most = shares[0].clone();
    cv::Mat least = shares[0].clone();
    for (const cv::Mat &share : shares) {
        most = cv::max(most, share);
        least = cv::min(least, share);
    }
    return (most - least < leastColorChange) & (least > darkestShadow);
}

/// The parts of `smooth` that hold some of `seeds`.
cv::Mat reachedFrom(const cv::Mat &seeds, const cv::Mat &smooth)
{
    cv::Mat labels;
    const int count = cv::connectedComponents(smooth, labels, 4);
    std::vector<int> cells(size_t(count), 0);
    std::vector<int> seedCells(size_t(count), 0);
    for (int y = 0; y < labels.rows; ++y) {
        for (int x = 0; x < labels.cols; ++x) {
            const auto label = size_t(labels.at<int>(y, x));
            ++cells[label];
            seedCells[label] += seeds.at<uchar>(y, x) != 0;
        }
    }
    cv::Mat reached(labels.size(), CV_8UC1, cv::Scalar(0));
    for (int y = 0; y < labels.rows; ++y) {
        for (int x = 0; x < labels.cols; ++x) {
            const auto label = size_t(labels.at<int>(y, x));
            if (label != 0 && seedCells[label] * 20 > cells[label])
                reached.at<uchar>(y, x) = 255;
        }
    }
    return reached;
}

/// `isPaper` without pictures that have no edge on one side.
cv::Mat withoutPictures(const cv::Mat &isPaper, const cv::Mat &lightness)
{
    cv::Mat seen(lightness.size(), CV_8UC1, cv::Scalar(0));
    lightness.copyTo(seen, isPaper);
    cv::Mat around;
    cv::dilate(seen, around, box(oddCells(2 * pictureReachMm)));
    const int strip = oddCells(sideShadowMm);
    const cv::Rect inside(strip, strip, seen.cols - 2 * strip, seen.rows - 2 * strip);
    if (inside.width <= 0 || inside.height <= 0)
        return isPaper;
    cv::Mat inner(seen.size(), CV_8UC1, cv::Scalar(0));
    isPaper(inside).copyTo(inner(inside));
    cv::Mat limit;
    around.convertTo(limit, CV_8U, 1 - pictureDarkness);
    const cv::Mat dark = inner & (seen < limit);
    around.convertTo(limit, CV_8U, 1 - pictureRise);
    return isPaper & ~reachedFrom(dark, inner & (seen < limit));
}

bool surroundsThePage(const cv::Mat &isPaper)
{
    if (cv::countNonZero(isPaper) < leastPaper * double(isPaper.total()))
        return false;
    const int depth = std::min(oddCells(edgeMm), std::min(isPaper.cols, isPaper.rows));
    const std::array sides{cv::Rect(0, 0, isPaper.cols, depth),
                           cv::Rect(0, isPaper.rows - depth, isPaper.cols, depth),
                           cv::Rect(0, 0, depth, isPaper.rows),
                           cv::Rect(isPaper.cols - depth, 0, depth, isPaper.rows)};
    const auto isOfPaper = [&](const cv::Rect &side) {
        return cv::countNonZero(isPaper(side)) >= leastOfSide * side.area();
    };
    return std::count_if(sides.begin(), sides.end(), isOfPaper) >= 3;
}

/// `values` where `known`, smoothed, and carried on from there to everywhere: level by level of a
/// pyramid the mean of what is known.
cv::Mat carriedOn(const cv::Mat &values, const cv::Mat &known)
{
    cv::Mat weight;
    known.convertTo(weight, CV_32F, 1 / 255.0);
    std::vector<cv::Mat> planes(size_t(values.channels()));
    cv::split(values, planes);
    for (cv::Mat &plane : planes) {
        plane.convertTo(plane, CV_32F);
        std::vector<cv::Mat> sums{plane.mul(weight)};
        std::vector<cv::Mat> weights{weight.clone()};
        cv::GaussianBlur(sums[0], sums[0], {5, 5}, 0);
        cv::GaussianBlur(weights[0], weights[0], {5, 5}, 0);
        while (std::max(sums.back().rows, sums.back().cols) > 2) {
            cv::Mat sum;
            cv::Mat share;
            cv::pyrDown(sums.back(), sum);
            cv::pyrDown(weights.back(), share);
            sums.push_back(sum);
            weights.push_back(share);
        }
        cv::Mat field = sums.back() / (weights.back() + 1e-6F);
        for (size_t level = sums.size() - 1; level-- > 0;) {
            cv::Mat wide;
            cv::resize(field, wide, sums[level].size(), 0, 0, cv::INTER_LINEAR);
            const cv::Mat trust = cv::min(weights[level] * 4, 1.0);
            const cv::Mat here = sums[level] / (weights[level] + 1e-6F);
            field = here.mul(trust) + wide.mul(1 - trust);
        }
        field.convertTo(plane, CV_8U);
    }
    cv::Mat result;
    cv::merge(planes, result);
    return result;
}

} // namespace

cv::Mat greyOf(const cv::Mat &image)
{
    cv::Mat grey = image;
    if (image.channels() != 1)
        cv::cvtColor(image, grey, image.channels() == 4 ? cv::COLOR_BGRA2GRAY : cv::COLOR_BGR2GRAY);
    return grey;
}

PaperField paperOf(const cv::Mat &page, double pixelsPerMm)
{
    PaperField field;
    const int reduction = std::max(1, int(std::lround(cellMm * pixelsPerMm)));
    const cv::Size size(page.cols / reduction, page.rows / reduction);
    if (size.width < 2 || size.height < 2)
        return field;
    cv::Mat cells;
    cv::resize(page, cells, size, 0, 0, cv::INTER_AREA);
    const cv::Mat areas = areasOf(withoutIdleChannel(cells));
    const cv::Mat lightness = greyOf(areas);
    const cv::Mat smooth = smoothCells(areas, lightness);
    const int level = paperLevel(lightness, smooth);
    if (level == 0)
        return field;
    cv::Mat seeds = smooth & (lightness >= level - 10) & (lightness <= level + 10);
    const cv::Scalar paper = cv::mean(areas, seeds);
    if (areas.channels() == 3) {
        const auto [least, most] = std::minmax({paper[0], paper[1], paper[2]});
        if (most - least > strongestTint)
            return field;
    }
    const cv::Mat candidates = smooth & coloredAs(paper, areas);
    field.isPaper = withoutPictures(reachedFrom(seeds & candidates, candidates), lightness);
    if (!surroundsThePage(field.isPaper))
        return {};
    field.color = carriedOn(areas, field.isPaper);
    field.lightness = greyOf(field.color);
    field.exists = true;
    return field;
}

} // namespace scanengine
