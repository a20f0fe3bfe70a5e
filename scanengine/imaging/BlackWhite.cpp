#include "scanengine/imaging/BlackWhite.h"

#include "scanengine/imaging/PageSurvey.h"
#include "scanengine/imaging/PixelView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace scanengine {
namespace {

/// Cells in which the darkest and the lightest are looked for, in millimetres.
constexpr double cellMm = 0.68;
/// Between ink and paper, from the ink's side.
constexpr double threshold = 0.58;
/// Light strokes on dark differ from it at least by this, of 255.
constexpr int leastContrastOnDark = 60;

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

/// The threshold in each cell, for the levels of the page itself.
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

    cv::Mat ofStrokes(cells, CV_8UC1, cv::Scalar(255));
    cv::Mat between;
    cv::addWeighted(dark, 1 - threshold, light, threshold, 0, between);
    between.copyTo(ofStrokes, strokes != 0);
    // Pencil beside something black is judged by itself.
    ink.setTo(255, survey.strokes != weakStroke);
    const cv::Mat pale = darkestAround(ink, cells);
    cv::Mat ofPale;
    cv::addWeighted(pale, 1 - threshold, light, threshold, 0, ofPale);
    cv::max(ofStrokes, ofPale, ofPale);
    ofPale.copyTo(ofStrokes, (strokes != 0) & (pale < light));
    // The palest ends of strokes aren't found; the threshold beside them reaches that far.
    ofPale.setTo(255, (strokes == 0) | (pale >= light));
    const cv::Mat reach = cv::getStructuringElement(cv::MORPH_RECT, {7, 7});
    cv::Mat near;
    cv::erode(ofStrokes, near, reach);
    cv::erode(ofPale, ofPale, reach);
    ofPale.copyTo(near, ofPale < 255);
    near.copyTo(ofStrokes, strokes == 0);

    cv::Mat result(cells, CV_8UC1, cv::Scalar(128));
    ofStrokes.copyTo(result, ofStrokes < 255);
    const cv::Mat isContrasty = light - dark >= leastContrastOnDark;
    between.copyTo(result, (light < 200) & isContrasty);
    // Beside the edge of a black area lies nothing but noise: that is black as well.
    result.setTo(128, (light < 128) & ~isContrasty);
    cv::blur(result, result, {3, 3});
    if (survey.paper.exists) {
        cv::Mat paper;
        cv::resize(survey.paper.lightness, paper, cells, 0, 0, cv::INTER_LINEAR);
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

} // namespace

QImage inBlackAndWhite(const QImage &image)
{
    QImage result(image.size(), QImage::Format_Mono);
    if (result.isNull())
        return result;
    result.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    result.setDotsPerMeterX(image.dotsPerMeterX());
    result.setDotsPerMeterY(image.dotsPerMeterY());
    result.fill(0);
    const PageSurvey survey = surveyOf(image);
    const cv::Mat page = pixelsOf(image);
    const cv::Mat cells = survey.pixels.empty()
                              ? cv::Mat(1, 1, CV_8UC1, cv::Scalar(oneThresholdFor(page)))
                              : thresholdsOf(survey);
    // In strips: a threshold for every pixel of a whole page would be one more page.
    constexpr int stripRows = 64;
    const int strips = (page.rows + stripRows - 1) / stripRows;
    uchar *bits = result.bits();
    const auto bytesPerLine = result.bytesPerLine();
    cv::parallel_for_({0, strips}, [&](const cv::Range &range) {
        cv::Mat limits;
        for (int strip = range.start; strip < range.end; ++strip) {
            const int first = strip * stripRows;
            const int last = std::min(page.rows, first + stripRows);
            const double scaleX = double(cells.cols) / page.cols;
            const double scaleY = double(cells.rows) / page.rows;
            const cv::Matx23d toCells(scaleX, 0, scaleX / 2 - 0.5, 0, scaleY,
                                      (first + 0.5) * scaleY - 0.5);
            cv::warpAffine(cells, limits, toCells, {page.cols, last - first},
                           cv::INTER_LINEAR | cv::WARP_INVERSE_MAP, cv::BORDER_REPLICATE);
            const cv::Mat grey = greyOf(page.rowRange(first, last));
            for (int y = first; y < last; ++y) {
                const uchar *level = grey.ptr(y - first);
                const uchar *limit = limits.ptr(y - first);
                uchar *to = bits + y * bytesPerLine;
                for (int x = 0; x < page.cols; ++x) {
                    if (level[x] >= limit[x])
                        to[x / 8] = uchar(to[x / 8] | (0x80 >> (x % 8)));
                }
            }
        }
    });
    return result;
}

} // namespace scanengine
