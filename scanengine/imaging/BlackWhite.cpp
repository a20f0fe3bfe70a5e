#include "scanengine/imaging/BlackWhite.h"

#include "scanengine/imaging/PageSurvey.h"
#include "scanengine/imaging/PixelView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace scanengine {
namespace {

/// Cells in which the darkest and the lightest are looked for, in millimetres.
constexpr double cellMm = 0.68;
/// Between ink and paper, from the ink's side.
constexpr double threshold = 0.58;
/// Light strokes on dark differ from it at least by this, of 255.
constexpr int leastContrastOnDark = 60;
/// Paper is as light as this, of 255; darker ground isn't paper.
constexpr int leastPaper = 200;
/// Ground shows beside any stroke that is narrower than this, in pixels of the survey.
constexpr int widestStroke = 9;
/// Side of the square without black around pencil that continues a black stroke, in such pixels.
constexpr int farFromBlack = 7;
/// How far the soft edge of something black reaches, in millimetres.
constexpr double softEdgeMm = 0.085;

/// The least value around each cell.
cv::Mat darkestAround(const cv::Mat &values, cv::Size cells)
{
    const int side = std::max(1, values.cols / cells.width) | 1;
    cv::Mat least;
    cv::erode(values, least, cv::getStructuringElement(cv::MORPH_RECT, {side, side}));
    cv::resize(least, least, cells, 0, 0, cv::INTER_NEAREST);
    cv::erode(least, least, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    return least;
}

cv::Mat lightestAround(const cv::Mat &values, cv::Size cells)
{
    return 255 - darkestAround(255 - values, cells);
}

/// `ink` where it is pencil on paper, 255 elsewhere: neither black, nor the edge of something
/// black, nor on dark ground.
cv::Mat pencilIn(const cv::Mat &ink, const cv::Mat &strokes)
{
    const auto square = [](int side) {
        return cv::getStructuringElement(cv::MORPH_RECT, {side, side});
    };
    cv::Mat ground;
    cv::morphologyEx(ink, ground, cv::MORPH_CLOSE, square(widestStroke));
    cv::Mat darkest;
    cv::erode(ink, darkest, square(farFromBlack));
    cv::Mat pencil = ink.clone();
    // Pencil that continues something black is part of a strong stroke.
    pencil.setTo(255, (strokes == 0) | ((strokes == strongStroke) & (darkest < 128)) |
                          (ground < leastPaper));
    return pencil;
}

/// Two thresholds in each cell, for the levels of the page itself: what is darker than the first is
/// ink. What is darker than the second is pencil, unless it is the soft edge of something black; 0
/// where there is no pencil around.
cv::Mat thresholdsOf(const PageSurvey &survey)
{
    const int reduction = std::max(1, int(std::lround(cellMm * survey.pixelsPerMm)));
    const cv::Size cells(std::max(1, survey.pixels.cols / reduction),
                         std::max(1, survey.pixels.rows / reduction));
    cv::Mat ink;
    cv::GaussianBlur(survey.lightness, ink, {3, 3}, 0);
    const cv::Mat dark = darkestAround(ink, cells);
    const cv::Mat light = lightestAround(ink, cells);
    const cv::Mat strokes = lightestAround(survey.strokes, cells);
    const cv::Mat isDarkGround = light < leastPaper;
    const auto between = [&](const cv::Mat &darkest) {
        cv::Mat middle;
        cv::addWeighted(darkest, 1 - threshold, light, threshold, 0, middle);
        return middle;
    };
    // The palest ends of strokes aren't found; the threshold beside them reaches that far.
    const auto extended = [](const cv::Mat &values) {
        cv::Mat result;
        cv::erode(values, result, cv::getStructuringElement(cv::MORPH_RECT, {7, 7}));
        return result;
    };

    const cv::Mat betweenAll = between(dark);
    cv::Mat ofStrokes(cells, CV_8UC1, cv::Scalar(255));
    betweenAll.copyTo(ofStrokes, strokes != 0);
    extended(ofStrokes).copyTo(ofStrokes, strokes == 0);

    cv::Mat ofInk(cells, CV_8UC1, cv::Scalar(128));
    ofStrokes.copyTo(ofInk, ofStrokes < 255);
    const cv::Mat isContrasty = light - dark >= leastContrastOnDark;
    betweenAll.copyTo(ofInk, isDarkGround & isContrasty);
    // Beside the edge of a black area lies nothing but noise: that is black as well.
    ofInk.setTo(128, (light < 128) & ~isContrasty);
    cv::blur(ofInk, ofInk, {3, 3});

    const cv::Mat pale = darkestAround(pencilIn(ink, survey.strokes), cells);
    cv::Mat ofPencil = between(pale);
    ofPencil.setTo(255, pale >= light);
    extended(ofPencil).copyTo(ofPencil, ofPencil == 255);
    const cv::Mat isElsewhere = ofPencil == 255;
    ofPencil.setTo(128, isElsewhere);
    cv::blur(ofPencil, ofPencil, {3, 3});
    ofPencil.setTo(0, isElsewhere | isDarkGround);

    cv::Mat result;
    cv::merge(std::vector{ofInk, ofPencil}, result);
    if (survey.paper.exists) {
        cv::Mat paper;
        cv::resize(survey.paper.lightness, paper, cells, 0, 0, cv::INTER_LINEAR);
        cv::merge(std::vector{paper, paper}, paper);
        cv::multiply(result, paper, result, 1 / 255.0);
    }
    return result;
}

/// For an image too small to have surroundings.
double oneThresholdFor(const cv::Mat &page)
{
    double darkest = 0;
    double lightest = 0;
    cv::minMaxLoc(greyOf(page), &darkest, &lightest);
    return lightest - darkest < leastContrastOnDark ? 128 : (darkest + lightest) / 2;
}

/// `cells`, which cover `page`, for each pixel of its `rows`.
cv::Mat perPixel(const cv::Mat &cells, cv::Size page, cv::Range rows)
{
    const double scaleX = double(cells.cols) / page.width;
    const double scaleY = double(cells.rows) / page.height;
    const cv::Matx23d toCells(scaleX, 0, scaleX / 2 - 0.5, 0, scaleY,
                              (rows.start + 0.5) * scaleY - 0.5);
    cv::Mat result;
    cv::warpAffine(cells, result, toCells, {page.width, rows.size()},
                   cv::INTER_LINEAR | cv::WARP_INVERSE_MAP, cv::BORDER_REPLICATE);
    return result;
}

/// If something within `reach` of a place of `grey` is less than half as light as `limit`.
bool isBesideBlack(const cv::Mat &grey, cv::Point place, int reach, int limit)
{
    for (int y = std::max(0, place.y - reach); y <= std::min(grey.rows - 1, place.y + reach); ++y) {
        const uchar *level = grey.ptr(y);
        const int last = std::min(grey.cols - 1, place.x + reach);
        for (int x = std::max(0, place.x - reach); x <= last; ++x) {
            if (2 * level[x] < limit)
                return true;
        }
    }
    return false;
}

} // namespace

QImage inBlackAndWhite(const QImage &image)
{
    QImage result(image.size(), QImage::Format_Mono);
    if (result.isNull())
        return result;
    result.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    result.setDotsPerMeterX(image.dotsPerMeterX());
    result.setDotsPerMeterY(image.dotsPerMeterY());
    result.fill(1);
    const PageSurvey survey = surveyOf(image);
    const cv::Mat page = pixelsOf(image);
    const cv::Mat cells = survey.pixels.empty()
                              ? cv::Mat(1, 1, CV_8UC2, cv::Scalar(oneThresholdFor(page), 0))
                              : thresholdsOf(survey);
    const double dotsPerMm =
        survey.pixels.empty() ? 1 : survey.pixelsPerMm * page.cols / survey.pixels.cols;
    const int reach = std::max(1, int(std::lround(softEdgeMm * dotsPerMm)));
    // In strips: thresholds for every pixel of a whole page would be two more pages.
    constexpr int stripRows = 64;
    const int strips = (page.rows + stripRows - 1) / stripRows;
    uchar *bits = result.bits();
    const auto bytesPerLine = result.bytesPerLine();
    cv::parallel_for_({0, strips}, [&](const cv::Range &range) {
        for (int strip = range.start; strip < range.end; ++strip) {
            const int first = strip * stripRows;
            const int last = std::min(page.rows, first + stripRows);
            const int above = std::min(first, reach);
            const cv::Mat grey =
                greyOf(page.rowRange(first - above, std::min(page.rows, last + reach)));
            const cv::Mat limits = perPixel(cells, page.size(), {first, last});
            for (int y = first; y < last; ++y) {
                const int row = above + y - first;
                const uchar *level = grey.ptr(row);
                const auto *limit = limits.ptr<cv::Vec2b>(y - first);
                uchar *to = bits + y * bytesPerLine;
                for (int x = 0; x < page.cols; ++x) {
                    const uchar ofInk = limit[x][0];
                    const uchar ofPencil = limit[x][1];
                    if (level[x] < ofInk ||
                        (level[x] < ofPencil && !isBesideBlack(grey, {x, row}, reach, ofPencil)))
                        to[x / 8] = uchar(to[x / 8] & ~(0x80 >> (x % 8)));
                }
            }
        }
    });
    return result;
}

} // namespace scanengine
