#include "pipeline/recognition/PagePreparation.h"

#include "pipeline/ImageView.h"
#include "pipeline/recognition/RuleRemoval.h"
#include "pipeline/recognizer/RecognizerMessages.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

// Paper is made white by dividing each channel by its background. The background is a closing on an
// image reduced eight times: it swallows strokes and keeps shadows, tints and larger dark areas.
// Then the darkest channel is the page, so that pale coloured print counts as dark; a channel
// without light, such as blue on yellow paper, is left out.

namespace velmor {

namespace {

constexpr double wantedDpi = 300;
constexpr double leastDpi = 72;
constexpr double longSideOfA4 = 11.69; // inches
/// Reducing by less only blurs.
constexpr double slightReduction = 0.85;
/// A resolution below, on an image with a longer side above, is a screen's or a camera's.
constexpr double leastScannedDpi = 150;
constexpr int leastScannedSide = 1500; // pixels

/// The standard deviation that smooths grain, in inches: one pixel at 300 dpi.
constexpr double grainRadius = 1 / 300.0;
/// Strokes are too thin to be smoothed below.
constexpr int leastSmoothedDpi = 200;

/// The factor between the image and the one used to look at large structures.
constexpr int coarse = 8;
/// Widest stroke that the closing swallows, in coarse pixels: 9 mm at 300 dpi.
constexpr int widestStroke = 13;
/// Paper this light needs no evening out.
constexpr int lightPaper = 225;
/// From here up to `surePaper`, a background counts more and more as paper; below it is a picture.
constexpr double darkestPaper = 40;
constexpr double surePaper = 90;

/// A line of print set light on dark covers more coarse pixels than this.
constexpr int smallestBlock = 200;

QImage greyImage(const cv::Mat &mat)
{
    QImage image(mat.cols, mat.rows, QImage::Format_Grayscale8);
    if (!image.isNull())
        mat.copyTo(imageView(image, CV_8UC1));
    return image;
}

struct Scaling {
    double factor;
    int dpi;
};

Scaling scalingFor(const QImage &image)
{
    const double claimed = std::max(image.dotsPerMeterX(), image.dotsPerMeterY()) * 0.0254;
    const int longSide = std::max(image.width(), image.height());
    const bool plausible = claimed >= leastDpi && claimed <= 2400;
    double dpi = claimed;
    if (!plausible || (claimed < leastScannedDpi && longSide > leastScannedSide))
        dpi = std::clamp(longSide / longSideOfA4, leastDpi, 2400.0);
    const double bounded = static_cast<double>(maxRecognizedSide) / longSide;
    const double wanted = wantedDpi / dpi < slightReduction ? wantedDpi / dpi : 1;
    const double factor = std::min(wanted, bounded);
    return {factor, static_cast<int>(std::lround(std::max(leastDpi, dpi * factor)))};
}

cv::Mat reduced(const cv::Mat &source, double factor)
{
    if (factor >= 1)
        return source;
    const cv::Size size(std::max(1, static_cast<int>(std::lround(source.cols * factor))),
                        std::max(1, static_cast<int>(std::lround(source.rows * factor))));
    cv::Mat result;
    cv::resize(source, result, size, 0, 0, cv::INTER_AREA);
    return result;
}

/// Transparent parts become white. The source has 32 bits a pixel, multiplied by alpha.
QImage onWhite(QImage image)
{
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [](QRgb pixel) {
            const int white = 255 - qAlpha(pixel);
            return qRgb(qRed(pixel) + white, qGreen(pixel) + white, qBlue(pixel) + white);
        });
    }
    return image;
}

/// One plane for a grey image, three for a coloured one.
std::vector<cv::Mat> planes(const QImage &image, double factor)
{
    const bool grey = image.format() == QImage::Format_Grayscale8 ||
                      image.format() == QImage::Format_Grayscale16 ||
                      (!image.hasAlphaChannel() && image.isGrayscale());
    if (grey) {
        const QImage bytes = image.convertToFormat(QImage::Format_Grayscale8);
        return {reduced(imageView(bytes, CV_8UC1), factor).clone()};
    }
    const QImage colours = image.hasAlphaChannel()
                               ? onWhite(image.convertToFormat(QImage::Format_ARGB32_Premultiplied))
                               : image.convertToFormat(QImage::Format_RGB32);
    std::vector<cv::Mat> channels;
    cv::split(reduced(imageView(colours, CV_8UC4), factor), channels);
    channels.pop_back(); // alpha
    return channels;
}

cv::Mat coarseView(const cv::Mat &plane)
{
    const cv::Size size(std::max(1, plane.cols / coarse), std::max(1, plane.rows / coarse));
    cv::Mat small;
    cv::resize(plane, small, size, 0, 0, cv::INTER_AREA);
    return small;
}

cv::Mat disc(int side)
{
    return cv::getStructuringElement(cv::MORPH_ELLIPSE, {side, side});
}

/// What paper without print would look like, coarsely.
cv::Mat backgroundOf(const cv::Mat &plane)
{
    cv::Mat background = coarseView(plane);
    cv::morphologyEx(background, background, cv::MORPH_CLOSE, disc(widestStroke), {-1, -1}, 1,
                     cv::BORDER_REPLICATE);
    cv::GaussianBlur(background, background, {widestStroke, widestStroke}, 0, 0,
                     cv::BORDER_REPLICATE);
    return background;
}

/// The value of a channel that becomes white, where its background is `value` and that of the
/// page's lightest channel `lightest`.
uchar whitePoint(int value, int lightest)
{
    if (value * 2 < lightest)
        return 1; // all white: little more than noise, the other channels tell
    const double trust =
        std::clamp((lightest - darkestPaper) / (surePaper - darkestPaper), 0.0, 1.0);
    return static_cast<uchar>(std::lround(255 + trust * (value - 255)));
}

cv::Mat whitePoints(const cv::Mat &background, const cv::Mat &lightest)
{
    cv::Mat whites(background.size(), CV_8UC1);
    for (int y = 0; y < whites.rows; ++y) {
        const auto *value = background.ptr<uchar>(y);
        const auto *light = lightest.ptr<uchar>(y);
        std::transform(value, value + whites.cols, light, whites.ptr<uchar>(y), whitePoint);
    }
    return whites;
}

/// True when nearly all of the paper is white anyhow.
bool isEven(const cv::Mat &whites)
{
    const int dim = cv::countNonZero(whites < lightPaper);
    return dim * 50 < static_cast<int>(whites.total());
}

void whiten(cv::Mat &plane, cv::Mat whites)
{
    if (isEven(whites))
        return;
    cv::resize(whites, whites, plane.size(), 0, 0, cv::INTER_LINEAR);
    cv::divide(plane, whites, plane, 255);
}

cv::Mat evenPage(std::vector<cv::Mat> channels)
{
    std::vector<cv::Mat> backgrounds;
    std::ranges::transform(channels, std::back_inserter(backgrounds), backgroundOf);
    cv::Mat lightest = backgrounds[0].clone();
    for (const cv::Mat &background : backgrounds)
        cv::max(lightest, background, lightest);
    for (size_t i = 0; i < channels.size(); ++i)
        whiten(channels[i], whitePoints(backgrounds[i], lightest));
    for (size_t i = 1; i < channels.size(); ++i)
        cv::min(channels[0], channels[i], channels[0]);
    return channels[0];
}

/// Rectangles that are mostly dark, with something light on them, in coarse pixels: where they are
/// is not zero.
cv::Mat darkBlocks(const cv::Mat &page)
{
    const cv::Mat dark = coarseView(page) < 128;
    cv::Mat solid;
    cv::morphologyEx(dark, solid, cv::MORPH_CLOSE, disc(9));
    cv::morphologyEx(solid, solid, cv::MORPH_OPEN, disc(7));
    cv::Mat labels;
    cv::Mat statistics;
    cv::Mat centres;
    const int count = cv::connectedComponentsWithStats(solid, labels, statistics, centres, 4);
    cv::Mat blocks = cv::Mat::zeros(dark.size(), CV_8UC1);
    for (int label = 1; label < count; ++label) {
        const cv::Rect box(statistics.at<int>(label, cv::CC_STAT_LEFT),
                           statistics.at<int>(label, cv::CC_STAT_TOP),
                           statistics.at<int>(label, cv::CC_STAT_WIDTH),
                           statistics.at<int>(label, cv::CC_STAT_HEIGHT));
        const int area = statistics.at<int>(label, cv::CC_STAT_AREA);
        const bool rectangular = area * 100 >= box.area() * 85;
        // Large bold print closes to a block as well, but is no darker than it is light.
        const bool mostlyDark = cv::countNonZero(dark(box)) * 100 >= box.area() * 65;
        if (area >= smallestBlock && rectangular && mostlyDark)
            blocks(box).setTo(255, labels(box) == label);
    }
    return blocks;
}

void invertDarkBlocks(cv::Mat &page)
{
    const cv::Mat blocks = darkBlocks(page);
    if (cv::countNonZero(blocks) == 0)
        return;
    cv::Mat core;
    cv::Mat rim;
    cv::resize(blocks, core, page.size(), 0, 0, cv::INTER_NEAREST);
    cv::dilate(blocks, rim, disc(3));
    cv::resize(rim, rim, page.size(), 0, 0, cv::INTER_NEAREST);
    cv::Mat inverted;
    cv::bitwise_not(page, inverted);
    page.setTo(255, rim); // the block's own ragged edge would look like ink
    inverted.copyTo(page, core);
}

/// The recognition takes the grain on the edges of small print for parts of letters. Blurring by a
/// third of a thin stroke takes it out and leaves the letters.
void smoothGrain(PreparedPage &page)
{
    if (page.dpi < leastSmoothedDpi)
        return;
    const double radius = grainRadius * page.dpi;
    const cv::Mat pixels = imageView(page.pixels, CV_8UC1);
    cv::GaussianBlur(pixels, pixels, {0, 0}, radius, radius, cv::BORDER_REPLICATE);
}

int rotateCode(int degrees)
{
    if (degrees == 90)
        return cv::ROTATE_90_CLOCKWISE;
    return degrees == 180 ? cv::ROTATE_180 : cv::ROTATE_90_COUNTERCLOCKWISE;
}

} // namespace

std::optional<PreparedPage> preparePage(const QImage &image)
{
    if (image.isNull())
        return std::nullopt;
    try {
        const Scaling scaling = scalingFor(image);
        cv::Mat page = evenPage(planes(image, scaling.factor));
        invertDarkBlocks(page);
        PreparedPage prepared{greyImage(page), scaling.dpi};
        if (prepared.pixels.isNull())
            return std::nullopt;
        removeRules(prepared.pixels, prepared.dpi);
        smoothGrain(prepared);
        return prepared;
    } catch (const std::exception &) { // OpenCV's own, and want of memory
        return std::nullopt;
    }
}

PreparedPage turned(const PreparedPage &page, int degrees)
{
    if (degrees == 0)
        return page;
    cv::Mat result;
    cv::rotate(imageView(page.pixels, CV_8UC1), result, rotateCode(degrees));
    return {greyImage(result), page.dpi};
}

} // namespace velmor
