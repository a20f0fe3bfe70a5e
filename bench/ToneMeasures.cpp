#include "bench/ToneMeasures.h"

#include "scanengine/imaging/PixelView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace bench {
namespace {

constexpr double leastContrast = 0.06;
constexpr int white = 250;
constexpr double rimMm = 5;
/// Wider than any stroke that is lighter than half of the way to black: shading, which black and
/// white leaves out.
constexpr double shadingMm = 2;

/// `page`, the sheet of `art`, as it is meant to look: on white paper.
cv::Mat onWhite(const corpus::PageArt &art, const QImage &page)
{
    const cv::Mat sheet = scanengine::pixelsOf(page);
    const cv::Mat bare = scanengine::pixelsOf(art.paper);
    const cv::Scalar paper =
        cv::countNonZero(bare) > 0 ? cv::mean(sheet, bare) : cv::Scalar::all(255);
    cv::Mat result;
    cv::divide(sheet, cv::Mat(sheet.size(), sheet.type(), paper + cv::Scalar(0, 0, 0, 255)), result,
               255);
    return result;
}

cv::Mat colored(const QImage &image)
{
    cv::Mat result = scanengine::pixelsOf(image);
    if (result.channels() == 1)
        cv::cvtColor(result, result, cv::COLOR_GRAY2BGRA);
    return result.clone();
}

int colorOf(const cv::Vec4b &pixel)
{
    const auto [least, most] = std::minmax({pixel[0], pixel[1], pixel[2]});
    return most - least;
}

bool isInRim(const corpus::PageArt &art, int x, int y)
{
    const double rim = rimMm * art.page.dotsPerMeterX() / 1000;
    return x < rim || y < rim || x >= art.page.width() - rim || y >= art.page.height() - rim;
}

double photoError(const corpus::PageArt &art, const cv::Mat &truth, const cv::Mat &cleaned)
{
    const cv::Mat mask = scanengine::pixelsOf(art.photo);
    if (cv::countNonZero(mask) == 0)
        return -1;
    // Noise isn't damage: means over 4x4 pixels are compared.
    cv::Mat before;
    cv::Mat after;
    cv::Mat inside;
    cv::resize(truth, before, {}, 0.25, 0.25, cv::INTER_AREA);
    cv::resize(cleaned, after, {}, 0.25, 0.25, cv::INTER_AREA);
    cv::resize(mask, inside, {}, 0.25, 0.25, cv::INTER_AREA);
    cv::Mat difference;
    cv::absdiff(before, after, difference);
    const cv::Scalar mean = cv::mean(difference, inside == 255);
    return (mean[0] + mean[1] + mean[2]) / 3;
}

/// 255 in light areas of ink.
cv::Mat shadingOf(const corpus::PageArt &art)
{
    const int side = int(shadingMm * art.page.dotsPerMeterX() / 1000);
    cv::Mat areas;
    cv::morphologyEx(scanengine::pixelsOf(art.ink), areas, cv::MORPH_OPEN,
                     cv::getStructuringElement(cv::MORPH_RECT, {side, side}));
    cv::Mat grey;
    cv::cvtColor(onWhite(art, art.page), grey, cv::COLOR_BGRA2GRAY);
    return areas & (grey > 127);
}

} // namespace

CleaningMeasures measureCleaning(const corpus::PageArt &art, const QImage &seen,
                                 const QImage &cleaned)
{
    CleaningMeasures result;
    const cv::Mat truth = onWhite(art, art.page);
    const cv::Mat page = colored(cleaned);
    cv::Mat smooth;
    cv::Mat smoothTruth;
    cv::Mat smoothSeen;
    cv::blur(page, smooth, {3, 3});
    cv::blur(truth, smoothTruth, {3, 3});
    cv::blur(onWhite(art, seen), smoothSeen, {3, 3});
    double sum = 0;
    double squares = 0;
    double colorBefore = 0;
    double colorAfter = 0;
    for (int y = 0; y < page.rows; ++y) {
        const uchar *ink = art.ink.constScanLine(y);
        const uchar *paper = art.paper.constScanLine(y);
        const uchar *color = art.color.constScanLine(y);
        const uchar *photo = art.photo.constScanLine(y);
        for (int x = 0; x < page.cols; ++x) {
            const auto &wanted = smoothTruth.at<cv::Vec4b>(y, x);
            const auto &found = smooth.at<cv::Vec4b>(y, x);
            const auto darkest = std::min_element(&wanted[0], &wanted[3]) - &wanted[0];
            const double contrast = 1 - wanted[int(darkest)] / 255.0;
            if (ink[x] && !photo[x] && contrast >= leastContrast && !isInRim(art, x, y)) {
                const double seenContrast =
                    1 - smoothSeen.at<cv::Vec4b>(y, x)[int(darkest)] / 255.0;
                ++result.inkPixels;
                result.lostInk += 1 - found[int(darkest)] / 255.0 < seenContrast / 2;
            }
            if (paper[x] && !isInRim(art, x, y)) {
                const auto &pixel = page.at<cv::Vec4b>(y, x);
                const double level = (pixel[0] + pixel[1] + pixel[2]) / 3.0;
                ++result.paperPixels;
                result.whitePaper += level >= white;
                sum += level;
                squares += level * level;
            }
            if (color[x] && !photo[x]) {
                colorBefore += colorOf(wanted);
                colorAfter += colorOf(found);
            }
        }
    }
    if (result.paperPixels > 0) {
        const double mean = sum / result.paperPixels;
        result.paperDeviation =
            std::sqrt(std::max(0.0, squares / result.paperPixels - mean * mean));
    }
    if (colorBefore > 0 && cleaned.format() != QImage::Format_Grayscale8)
        result.colorKept = colorAfter / colorBefore;
    if (cleaned.format() != QImage::Format_Grayscale8)
        result.photoError = photoError(art, truth, page);
    return result;
}

BlackWhiteMeasures measureBlackWhite(const corpus::PageArt &art, const QImage &seen,
                                     const QImage &bits)
{
    BlackWhiteMeasures result;
    const QImage grey = bits.convertToFormat(QImage::Format_Grayscale8);
    const cv::Mat shading = shadingOf(art);
    cv::Mat sheet;
    cv::Mat seenSheet;
    cv::Mat left;
    cv::cvtColor(onWhite(art, art.page), sheet, cv::COLOR_BGRA2GRAY);
    cv::cvtColor(onWhite(art, seen), seenSheet, cv::COLOR_BGRA2GRAY);
    cv::blur(sheet, sheet, {3, 3});
    cv::blur(seenSheet, seenSheet, {3, 3});
    cv::blur(scanengine::pixelsOf(grey), left, {3, 3});
    for (int y = 0; y < grey.height(); ++y) {
        const uchar *level = grey.constScanLine(y);
        for (int x = 0; x < grey.width(); ++x) {
            if (isInRim(art, x, y))
                continue;
            const double contrast = 255 - sheet.at<uchar>(y, x);
            if (art.ink.constScanLine(y)[x] && !art.photo.constScanLine(y)[x] &&
                shading.at<uchar>(y, x) == 0 && contrast >= 255 * leastContrast) {
                ++result.inkPixels;
                const double seenContrast = 255 - seenSheet.at<uchar>(y, x);
                result.lostInk += 255 - left.at<uchar>(y, x) < seenContrast / 2;
            }
            if (art.paper.constScanLine(y)[x]) {
                ++result.paperPixels;
                result.salt += level[x] == 0;
            }
        }
    }
    return result;
}

} // namespace bench
