#include "scanengine/imaging/PageColors.h"

#include "scanengine/imaging/PixelView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace scanengine {
namespace {

/// The standard deviation of the window over which colours are averaged, in millimetres. Fringes on
/// the two sides of a stroke have opposite colours and cancel out.
constexpr double windowMm = 0.6;
/// From this difference between the averaged channels, of 255, there is colour.
constexpr double leastColor = 11;
/// And this much without averaging, over more than the width of a fringe.
constexpr double leastPlainColor = 16;
/// Beside black, as dark as this, of 255, colours aren't judged within so many pixels: a scanner
/// gives the edges of solid areas fringes, and JPEG makes them wide.
constexpr int darkestBlack = 100;
constexpr int reachOfFringes = 3;
/// So much of it, in square millimetres, makes a coloured page.
constexpr double leastColorMm2 = 2;
/// The strip along each side that isn't looked at: the lid shows there.
constexpr double rimMm = 4;

constexpr double leastBlackWhiteDpi = 299;
/// The part of a black and white page that may be anything but paper and strokes.
constexpr double mostPictures = 0.002;
/// The part of its strokes that may be weak: specks are.
constexpr double mostWeakStrokes = 0.01;
/// Pixels between black and white at a crisp edge. Softer print reads better in grey.
constexpr double mostPixelsAtAnEdge = 1;

cv::Rect insideRim(const cv::Mat &image, double pixelsPerMm)
{
    const int rim = std::min(int(rimMm * pixelsPerMm), std::min(image.cols, image.rows) / 4);
    return {rim, rim, image.cols - 2 * rim, image.rows - 2 * rim};
}

/// The page with its paper white, if it shows some.
cv::Mat underWhiteLight(const cv::Mat &page, const PaperField &paper)
{
    cv::Mat result;
    cv::cvtColor(page, result, cv::COLOR_BGRA2BGR);
    if (!paper.exists)
        return result;
    cv::Mat white;
    cv::resize(paper.color, white, result.size(), 0, 0, cv::INTER_LINEAR);
    cv::divide(result, white, result, 255);
    return result;
}

cv::Mat greatestOf(const std::array<cv::Mat, 3> &planes)
{
    return cv::max(planes[0], cv::max(planes[1], planes[2]));
}

/// The difference between the greatest and the least channel.
cv::Mat spreadOf(const cv::Mat &page)
{
    std::array<cv::Mat, 3> planes;
    cv::split(page, planes.data());
    return greatestOf(planes) - cv::min(planes[0], cv::min(planes[1], planes[2]));
}

/// 255 on black and beside it.
cv::Mat besideBlack(const cv::Mat &page, const cv::Mat &spread)
{
    std::array<cv::Mat, 3> planes;
    cv::split(page, planes.data());
    cv::Mat black = (greatestOf(planes) <= darkestBlack) & (spread < leastPlainColor);
    constexpr int side = 2 * reachOfFringes + 1;
    cv::dilate(black, black, cv::getStructuringElement(cv::MORPH_RECT, {side, side}));
    return black;
}

bool showsColor(const PageSurvey &survey)
{
    if (survey.pixels.channels() == 1)
        return false;
    const cv::Mat page = underWhiteLight(survey.pixels, survey.paper);
    // Beside a solid area nothing cancels a fringe out, but it is thin.
    const cv::Mat spread = spreadOf(page);
    cv::Mat plain = (spread >= leastPlainColor) & ~besideBlack(page, spread);
    cv::erode(plain, plain, cv::getStructuringElement(cv::MORPH_RECT, {2, 2}));
    cv::dilate(plain, plain, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    cv::Mat half;
    cv::resize(page, half, {}, 0.5, 0.5, cv::INTER_AREA);
    cv::resize(plain, plain, half.size(), 0, 0, cv::INTER_AREA);
    const double pixelsPerMm = survey.pixelsPerMm / 2;
    cv::GaussianBlur(half, half, {}, windowMm * pixelsPerMm);
    const cv::Mat colored = (spreadOf(half) >= leastColor) & (plain > 0);
    const cv::Mat inside = colored(insideRim(colored, pixelsPerMm));
    const double found = cv::countNonZero(inside);
    return found >= leastColorMm2 * pixelsPerMm * pixelsPerMm;
}

bool hasCrispEdges(const QImage &image)
{
    const cv::Mat page = pixelsOf(image);
    qint64 between = 0;
    qint64 edges = 0;
    for (int y = 0; y < page.rows; y += 16) {
        const cv::Mat row = greyOf(page.row(y));
        const uchar *level = row.ptr();
        bool isDark = false;
        for (int x = 0; x < row.cols; ++x) {
            between += level[x] > 80 && level[x] < 190;
            const bool turns = isDark ? level[x] >= 190 : level[x] <= 80;
            edges += turns;
            isDark = isDark != turns;
        }
    }
    return double(between) <= mostPixelsAtAnEdge * double(edges);
}

bool isBlackAndWhite(const QImage &image, const PageSurvey &survey)
{
    const double dpi = std::min(image.dotsPerMeterX(), image.dotsPerMeterY()) * 0.0254;
    if (dpi < leastBlackWhiteDpi || !survey.paper.exists)
        return false;
    const cv::Mat &isPaper = survey.paper.isPaper;
    const double perCell = double(survey.pixels.cols) / isPaper.cols;
    cv::Mat closed;
    cv::morphologyEx(isPaper, closed, cv::MORPH_CLOSE,
                     cv::getStructuringElement(cv::MORPH_RECT, {5, 5}));
    const cv::Mat inner = closed(insideRim(closed, survey.pixelsPerMm / perCell));
    const double pictures = double(inner.total()) - cv::countNonZero(inner);
    if (pictures > mostPictures * double(inner.total()))
        return false;
    const double weak = cv::countNonZero(survey.strokes == weakStroke);
    const double strong = cv::countNonZero(survey.strokes == strongStroke);
    return weak <= mostWeakStrokes * strong && hasCrispEdges(image);
}

} // namespace

ColorMode colorsOf(const QImage &image, const PageSurvey &survey)
{
    if (survey.pixels.empty())
        return image.allGray() ? ColorMode::gray : ColorMode::color;
    if (showsColor(survey))
        return ColorMode::color;
    return isBlackAndWhite(image, survey) ? ColorMode::blackWhite : ColorMode::gray;
}

} // namespace scanengine
