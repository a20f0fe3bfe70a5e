#include "scanengine/imaging/ColorMode.h"

#include <QLatin1StringView>

#include <algorithm>
#include <array>
#include <cmath>

namespace scanengine {
namespace {

/// From this difference between its channels on a pixel is coloured, in levels of 255: yellowed
/// paper and the colour noise of a JPEG file stay below.
constexpr int colorfulDifference = 48;
/// A page with one coloured pixel in this many is a coloured page.
constexpr qint64 pixelsPerColorfulOne = 1000;
/// Ink and paper differ at least by this much, in levels of 255. A page where no two sides do is
/// blank, and parting it would only bring out its grain.
constexpr double leastInkContrast = 32;

bool isColorful(QRgb pixel)
{
    const auto [least, most] = std::minmax({qRed(pixel), qGreen(pixel), qBlue(pixel)});
    return most - least >= colorfulDifference;
}

bool showsColor(const QImage &image)
{
    if (image.format() == QImage::Format_Grayscale8)
        return false;
    qint64 colorful = 0;
    for (int y = 0; y < image.height(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        colorful += std::count_if(row, row + image.width(), isColorful);
    }
    return colorful * pixelsPerColorfulOne >= qint64(image.width()) * image.height();
}

/// The first level that counts as paper, by Otsu's method: of all ways to part the histogram the
/// one with the largest variance between the two sides.
int paperLevel(const QImage &grey)
{
    std::array<qint64, 256> histogram{};
    for (int y = 0; y < grey.height(); ++y) {
        const uchar *row = grey.constScanLine(y);
        for (int x = 0; x < grey.width(); ++x)
            ++histogram[row[x]];
    }
    double total = 0;
    double totalSum = 0;
    for (size_t level = 0; level < histogram.size(); ++level) {
        total += double(histogram[level]);
        totalSum += double(level) * double(histogram[level]);
    }

    int best = 128;
    double bestVariance = 0;
    double dark = 0;
    double darkSum = 0;
    for (size_t level = 0; level + 1 < histogram.size(); ++level) {
        dark += double(histogram[level]);
        darkSum += double(level) * double(histogram[level]);
        const double light = total - dark;
        if (dark == 0 || light == 0)
            continue;
        const double difference = (totalSum - darkSum) / light - darkSum / dark;
        const double variance = dark * light * difference * difference;
        if (difference >= leastInkContrast && variance > bestVariance) {
            bestVariance = variance;
            best = int(level) + 1;
        }
    }
    return best;
}

QImage inBlackAndWhite(const QImage &grey)
{
    QImage result(grey.size(), QImage::Format_Mono);
    if (result.isNull())
        return result;
    result.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    result.setDotsPerMeterX(grey.dotsPerMeterX());
    result.setDotsPerMeterY(grey.dotsPerMeterY());
    result.fill(0);
    const int paper = paperLevel(grey);
    for (int y = 0; y < grey.height(); ++y) {
        const uchar *from = grey.constScanLine(y);
        uchar *to = result.scanLine(y);
        for (int x = 0; x < grey.width(); ++x) {
            if (from[x] >= paper)
                to[x / 8] = uchar(to[x / 8] | (0x80 >> (x % 8)));
        }
    }
    return result;
}

} // namespace

std::optional<ColorMode> colorModeOf(QStringView word)
{
    if (word == QLatin1StringView("auto"))
        return ColorMode::automatic;
    if (word == QLatin1StringView("color"))
        return ColorMode::color;
    if (word == QLatin1StringView("gray"))
        return ColorMode::gray;
    if (word == QLatin1StringView("bw"))
        return ColorMode::blackWhite;
    return std::nullopt;
}

QImage inColorMode(const QImage &image, ColorMode mode)
{
    if (mode == ColorMode::color || (mode == ColorMode::automatic && showsColor(image)))
        return image.convertToFormat(QImage::Format_RGB32);
    const QImage grey = image.convertToFormat(QImage::Format_Grayscale8);
    return mode == ColorMode::blackWhite ? inBlackAndWhite(grey) : grey;
}

} // namespace scanengine
