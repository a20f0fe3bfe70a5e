#include "scanengine/imaging/CleanBackground.h"

#include "scanengine/imaging/PixelView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

// Every pixel is divided by the paper under it. Then all that is lighter than the white point turns
// white. Where that lies is decided from place to place: low where there is nothing, or nothing but
// strong ink, so that the paper's grain and what shines through go; high at faint strokes and pale
// colours; and at the top on photographs, which nothing but the division changes.

namespace scanengine {
namespace {

/// White points, as parts of the paper's lightness.
constexpr double whiteOfEmptyPaper = 0.86;
constexpr double whiteAtFaintStrokes = 0.98;
constexpr double whiteAtPaleColor = 0.975;
constexpr double leastWhiteAtFaintStrokes = 0.92;
/// How far below the white point levels are stretched, further down all stays: long where nothing
/// is to be lost, short where faint strokes are to keep their darkness.
constexpr double longestStretch = 0.18;
constexpr double shortestStretch = 0.12;
/// From this difference between its channels, of 255, an area is coloured.
constexpr double leastColor = 10;
/// An area as dark as this, of 255, doesn't shine through from the other side.
constexpr double darkestBleed = 228;
/// The most that a pixel is made lighter.
constexpr double mostGain = 4;

constexpr int whiteSteps = 64;
using Curves = std::array<std::array<uchar, 256>, whiteSteps>;

/// A curve for each white point: step 0 is `whiteOfEmptyPaper`, the last 1, which changes nothing.
Curves makeCurves()
{
    Curves curves;
    for (size_t step = 0; step < curves.size(); ++step) {
        const double white =
            whiteOfEmptyPaper + (1 - whiteOfEmptyPaper) * double(step) / (whiteSteps - 1);
        const double toFaint =
            (white - whiteOfEmptyPaper) / (whiteAtFaintStrokes - whiteOfEmptyPaper);
        const double low =
            white - std::max(shortestStretch, std::lerp(longestStretch, shortestStretch, toFaint));
        for (size_t level = 0; level < 256; ++level) {
            const double share = double(level) / 255;
            const double raised =
                share <= low ? share : low + (share - low) * (1 - low) / (white - low);
            curves[step][level] = uchar(std::lround(255 * std::min(1.0, raised)));
        }
    }
    return curves;
}

uchar stepOf(double white)
{
    const double share = (white - whiteOfEmptyPaper) / (1 - whiteOfEmptyPaper);
    return uchar(std::clamp(int(std::lround(share * (whiteSteps - 1))), 0, whiteSteps - 1));
}

cv::Mat box(int side)
{
    return cv::getStructuringElement(cv::MORPH_RECT, {side, side});
}

/// 255 for each cell of `grid` that holds a pixel of `mask`, or lies within 3 mm of one that does:
/// where a stroke is found, its palest parts aren't far.
cv::Mat cellsWith(const cv::Mat &mask, const cv::Mat &grid)
{
    cv::Mat share;
    mask.convertTo(share, CV_32F);
    cv::resize(share, share, grid.size(), 0, 0, cv::INTER_AREA);
    cv::Mat cells = share > 0;
    cv::dilate(cells, cells, box(9));
    return cells;
}

cv::Mat coloredCells(const PageSurvey &survey)
{
    const PaperField &paper = survey.paper;
    if (paper.color.channels() == 1)
        return cv::Mat::zeros(paper.color.size(), CV_8UC1);
    cv::Mat cells;
    cv::resize(survey.pixels, cells, paper.color.size(), 0, 0, cv::INTER_AREA);
    cv::cvtColor(cells, cells, cv::COLOR_BGRA2BGR);
    cv::divide(cells, paper.color, cells, 255);
    std::array<cv::Mat, 3> planes;
    cv::split(cells, planes.data());
    const cv::Mat most = cv::max(planes[0], cv::max(planes[1], planes[2]));
    const cv::Mat least = cv::min(planes[0], cv::min(planes[1], planes[2]));
    cv::Mat colored = most - least >= leastColor;
    cv::dilate(colored, colored, box(3));
    return colored;
}

/// Printed grounds too pale or too narrow to count as pictures.
cv::Mat shadedCells(const PageSurvey &survey)
{
    cv::Mat cells;
    cv::resize(survey.lightness, cells, survey.paper.color.size(), 0, 0, cv::INTER_AREA);
    // Between the lines of the densest print there is paper.
    cv::dilate(cells, cells, box(5));
    cv::Mat shaded = cells <= darkestBleed;
    cv::dilate(shaded, shaded, box(7));
    return shaded;
}

/// The white point of each cell, as a step of the curves.
cv::Mat whitePoints(const PageSurvey &survey)
{
    const double grain = 3 * survey.noise / 255;
    const double faint = std::clamp(1 - grain, leastWhiteAtFaintStrokes, whiteAtFaintStrokes);
    cv::Mat steps(survey.paper.color.size(), CV_8UC1, cv::Scalar(stepOf(whiteOfEmptyPaper)));
    steps.setTo(stepOf(faint), cellsWith(survey.strokes == weakStroke, steps));
    steps.setTo(stepOf(whiteAtPaleColor), coloredCells(survey));
    steps.setTo(stepOf(whiteAtPaleColor), shadedCells(survey));
    // A picture's edge may be soft, and paper in a narrow gap isn't seen as such.
    cv::Mat isPaper;
    cv::morphologyEx(survey.paper.isPaper, isPaper, cv::MORPH_CLOSE, box(5));
    const cv::Mat pictures = isPaper == 0;
    steps.setTo(stepOf(1), pictures);
    cv::blur(steps, steps, {3, 3});
    return steps;
}

/// Where the value of each pixel of a side lies between two cells.
struct Place {
    int cell;
    int next;
    int share; ///< Of `next`, of 256.
};

std::vector<Place> placesOf(int pixels, int cells)
{
    std::vector<Place> places(static_cast<size_t>(pixels));
    for (int i = 0; i < pixels; ++i) {
        const double at = std::clamp((i + 0.5) * cells / pixels - 0.5, 0.0, cells - 1.0);
        const int cell = int(at);
        places[size_t(i)] = {cell, std::min(cell + 1, cells - 1), int((at - cell) * 256)};
    }
    return places;
}

/// For each cell the gain of up to three channels, in 4096ths, and the step of its curve, in 64ths.
cv::Mat recipesOf(const PageSurvey &survey)
{
    const cv::Mat steps = whitePoints(survey);
    const cv::Mat &paper = survey.paper.color;
    cv::Mat recipes(steps.size(), CV_32SC4);
    const int channels = paper.channels();
    for (int y = 0; y < steps.rows; ++y) {
        const uchar *color = paper.ptr(y);
        auto *recipe = recipes.ptr<cv::Vec4i>(y);
        for (int x = 0; x < steps.cols; ++x, color += channels) {
            for (int channel = 0; channel < 3; ++channel) {
                const double level = std::max<int>(1, color[channel % channels]);
                recipe[x][channel] = int(4096 * std::min(mostGain, 255 / level));
            }
            recipe[x][3] = steps.at<uchar>(y, x) * 64;
        }
    }
    return recipes;
}

cv::Vec4i between(const cv::Vec4i &a, const cv::Vec4i &b, int share)
{
    cv::Vec4i result;
    for (int i = 0; i < 4; ++i)
        result[i] = a[i] + ((b[i] - a[i]) * share >> 8);
    return result;
}

template <int pixelBytes>
void cleanRow(uchar *pixel, const std::vector<Place> &places, const std::vector<cv::Vec4i> &row,
              const Curves &curves)
{
    constexpr int channels = pixelBytes == 1 ? 1 : 3;
    for (const Place &place : places) {
        const cv::Vec4i recipe =
            between(row[size_t(place.cell)], row[size_t(place.next)], place.share);
        const auto &curve = curves[size_t(recipe[3] >> 6)];
        for (int channel = 0; channel < channels; ++channel) {
            const int lit = (pixel[channel] * recipe[channel] + 2048) >> 12;
            pixel[channel] = curve[size_t(std::min(255, lit))];
        }
        pixel += pixelBytes;
    }
}

} // namespace

QImage withCleanBackground(QImage image, const PageSurvey &survey)
{
    if (!survey.paper.exists)
        return image;
    const cv::Mat recipes = recipesOf(survey);
    static const Curves curves = makeCurves();
    const std::vector<Place> columns = placesOf(image.width(), recipes.cols);
    const std::vector<Place> rows = placesOf(image.height(), recipes.rows);
    cv::Mat pixels = writablePixelsOf(image);
    cv::parallel_for_({0, pixels.rows}, [&](const cv::Range &range) {
        std::vector<cv::Vec4i> row(static_cast<size_t>(recipes.cols));
        for (int y = range.start; y < range.end; ++y) {
            const Place &place = rows[size_t(y)];
            const auto *above = recipes.ptr<cv::Vec4i>(place.cell);
            const auto *below = recipes.ptr<cv::Vec4i>(place.next);
            for (size_t i = 0; i < row.size(); ++i)
                row[i] = between(above[i], below[i], place.share);
            if (pixels.channels() == 1)
                cleanRow<1>(pixels.ptr(y), columns, row, curves);
            else
                cleanRow<4>(pixels.ptr(y), columns, row, curves);
        }
    });
    return image;
}

} // namespace scanengine
