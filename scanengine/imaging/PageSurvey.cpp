#include "scanengine/imaging/PageSurvey.h"

#include "scanengine/imaging/PixelView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace scanengine {
namespace {

constexpr double surveyDpi = 150;
/// How much darker than its surroundings a stroke is at least, of 255.
constexpr double leastDarkness = 8;
/// By how much the lightness of a sharp stroke bends from one pixel to the next, on average over
/// the stroke, of 255, and as a part of its darkness.
constexpr double leastBend = 1.6;
constexpr double leastBendOfDarkness = 0.11;
/// Side of the neighbourhood in which weak strokes vouch for each other, in pixels: 15 mm.
constexpr int neighbourhood = 89;
/// A stroke as dark as this, of 255, needs no other evidence.
constexpr int surelyInk = 128;
/// How far from a stroke's middle both its sides show, in pixels; what is lighter on one side alone
/// is the end of a shade, unless it is darker than this.
constexpr int toTheSide = 4;
constexpr double leastOfOneSide = 40;

cv::Mat relativeTo(const cv::Mat &paper, const cv::Mat &grey)
{
    cv::Mat white;
    cv::resize(paper, white, grey.size(), 0, 0, cv::INTER_LINEAR);
    cv::Mat relative;
    cv::divide(grey, white, relative, 255);
    return relative;
}

/// The standard deviation of the noise: the median difference between neighbours, where most of
/// them lie on paper or in an even area.
double noiseOf(const cv::Mat &grey)
{
    std::array<int, 256> histogram{};
    int total = 0;
    for (int y = 0; y < grey.rows; y += 4) {
        const uchar *row = grey.ptr(y);
        for (int x = 0; x + 1 < grey.cols; ++x)
            ++histogram[size_t(std::abs(row[x + 1] - row[x]))];
        total += grey.cols - 1;
    }
    int below = 0;
    size_t difference = 0;
    while (difference < 255 && 2 * (below + histogram[difference]) < total)
        below += histogram[difference++];
    const double within =
        histogram[difference] == 0 ? 0 : (total / 2.0 - below) / histogram[difference];
    return (double(difference) - 0.5 + within) / 0.954;
}

struct Strokes {
    double darkness = 0; ///< Sums over the pixels.
    double bend = 0;
    int pixels = 0;
    int darkest = 255;

    [[nodiscard]] uchar kind(double noise) const
    {
        if (darkest < surelyInk)
            return strongStroke;
        // Noise bends as well.
        const double meanBend = bend / pixels - 0.45 * noise;
        const double meanDarkness = darkness / pixels;
        const bool isSharp =
            meanBend >= leastBend && meanBend >= leastBendOfDarkness * meanDarkness;
        return isSharp ? weakStroke : 0;
    }
};

/// Makes weak strokes of the `candidates` among which a fourth are weak strokes already: faint
/// pencil isn't sharp everywhere, and next to nothing of what shines through is.
void addVouchedFor(cv::Mat &marks, const cv::Mat &candidates)
{
    const cv::Mat doubtful = candidates & (marks == 0);
    cv::Mat weakShare;
    cv::Mat doubtfulShare;
    cv::blur(marks == weakStroke, weakShare, {neighbourhood, neighbourhood});
    cv::blur(doubtful, doubtfulShare, {neighbourhood, neighbourhood});
    marks.setTo(weakStroke, doubtful & (3 * weakShare > doubtfulShare));
}

/// How much darker than both its sides each pixel of `here` is, in the best of four directions.
cv::Mat depthOfGrooves(const cv::Mat &here)
{
    constexpr int reach = toTheSide;
    cv::Mat wide;
    cv::copyMakeBorder(here, wide, reach, reach, reach, reach, cv::BORDER_REPLICATE);
    const auto shifted = [&](int x, int y) {
        return wide({reach + x, reach + y, here.cols, here.rows});
    };
    cv::Mat sides(here.size(), CV_8UC1, cv::Scalar(0));
    for (const auto &[x, y] : {
             std::pair{reach, 0    },
             {0,     reach},
             {3,     3    },
             {3,     -3   }
    }) {
        const cv::Mat lower = cv::min(shifted(x, y), shifted(-x, -y));
        sides = cv::max(sides, lower);
    }
    return sides - here;
}

cv::Mat strokesIn(const cv::Mat &lightness, double noise)
{
    cv::Mat around;
    cv::Mat here;
    cv::Mat beside;
    cv::blur(lightness, around, {9, 9});
    cv::GaussianBlur(lightness, here, {3, 3}, 0);
    cv::Mat darkness = around - here;
    const double least = std::max(leastDarkness, 2.5 * noise);
    cv::Mat marks =
        (darkness >= least) & ((depthOfGrooves(here) >= least) | (darkness >= leastOfOneSide));
    const cv::Mat cross = (cv::Mat_<float>(3, 3) << 0, .25, 0, .25, 0, .25, 0, .25, 0);
    cv::filter2D(lightness, beside, CV_8U, cross);
    const cv::Mat bend = beside - lightness;

    cv::Mat labels;
    const int count = cv::connectedComponents(marks, labels, 8);
    std::vector<Strokes> strokes(static_cast<size_t>(count));
    for (int y = 0; y < labels.rows; ++y) {
        const int *label = labels.ptr<int>(y);
        for (int x = 0; x < labels.cols; ++x) {
            if (label[x] == 0)
                continue;
            Strokes &stroke = strokes[size_t(label[x])];
            stroke.darkness += darkness.at<uchar>(y, x);
            stroke.bend += bend.at<uchar>(y, x);
            stroke.darkest = std::min(stroke.darkest, int(lightness.at<uchar>(y, x)));
            ++stroke.pixels;
        }
    }
    std::vector<uchar> kinds(strokes.size(), 0);
    const cv::Mat candidates = marks.clone();
    for (size_t i = 1; i < strokes.size(); ++i)
        kinds[i] = strokes[i].kind(noise);
    for (int y = 0; y < labels.rows; ++y) {
        const int *label = labels.ptr<int>(y);
        uchar *mark = marks.ptr(y);
        for (int x = 0; x < labels.cols; ++x)
            mark[x] = kinds[size_t(label[x])];
    }
    addVouchedFor(marks, candidates);
    return marks;
}

} // namespace

PageSurvey surveyOf(const QImage &image)
{
    PageSurvey survey;
    const ReducedImage small = reduced(image, surveyDpi);
    if (small.pixels.empty())
        return survey;
    survey.pixels = small.pixels;
    survey.pixelsPerMm = small.pixelsPerMm;
    survey.paper = paperOf(survey.pixels, survey.pixelsPerMm);
    survey.lightness = greyOf(survey.pixels);
    if (survey.paper.exists)
        survey.lightness = relativeTo(survey.paper.lightness, survey.lightness);
    survey.noise = noiseOf(survey.lightness);
    survey.strokes = strokesIn(survey.lightness, survey.noise);
    return survey;
}

} // namespace scanengine
