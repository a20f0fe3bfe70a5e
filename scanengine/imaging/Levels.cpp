#include "scanengine/imaging/Levels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace scanengine {
namespace {

using Table = std::array<uchar, 256>;
using Histogram = std::array<qint64, 256>;

/// Levels from here on can be paper.
constexpr size_t darkestPaper = 128;
/// The paper's grain reaches down to this part of its most frequent level; all of it turns white.
constexpr double paperGrain = 0.94;

/// The bytes of a pixel that carry a channel: one of one, or the lower three of four (blue, green
/// and red; a machine with the other byte order is not supported).
struct Layout {
    int pixelBytes;
    int channels;
};

Layout layoutOf(const QImage &image)
{
    return image.format() == QImage::Format_Grayscale8 ? Layout{1, 1} : Layout{4, 3};
}

uchar toLevel(double value)
{
    return uchar(std::lround(std::clamp(value, 0.0, 255.0)));
}

void apply(QImage &image, const std::array<Table, 3> &tables)
{
    const Layout layout = layoutOf(image);
    for (int y = 0; y < image.height(); ++y) {
        uchar *pixel = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x, pixel += layout.pixelBytes) {
            for (int channel = 0; channel < layout.channels; ++channel)
                pixel[channel] = tables[size_t(channel)][pixel[channel]];
        }
    }
}

std::array<Histogram, 3> histogramsOf(const QImage &image)
{
    const Layout layout = layoutOf(image);
    std::array<Histogram, 3> histograms{};
    for (int y = 0; y < image.height(); ++y) {
        const uchar *pixel = image.constScanLine(y);
        for (int x = 0; x < image.width(); ++x, pixel += layout.pixelBytes) {
            for (int channel = 0; channel < layout.channels; ++channel)
                ++histograms[size_t(channel)][pixel[channel]];
        }
    }
    return histograms;
}

Table whitening(const Histogram &histogram)
{
    const auto light = histogram.begin() + darkestPaper;
    const auto paper = std::max_element(light, histogram.end());
    const double white = *paper == 0 ? 255 : double(paper - histogram.begin()) * paperGrain;
    Table table;
    for (size_t level = 0; level < table.size(); ++level)
        table[level] = toLevel(double(level) * 255 / white);
    return table;
}

} // namespace

QImage withLevels(QImage image, int brightness, int contrast)
{
    if (brightness == 0 && contrast == 0)
        return image;
    const double shift = std::clamp(brightness, -1000, 1000) / 3.0;
    const double steepness = 1 + std::abs(std::clamp(contrast, -1000, 1000)) / 900.0;
    const double spread = contrast < 0 ? 1 / steepness : steepness;
    Table table;
    for (size_t level = 0; level < table.size(); ++level)
        table[level] = toLevel((double(level) + shift - 128) * spread + 128);
    apply(image, {table, table, table});
    return image;
}

QImage withCleanBackground(QImage image)
{
    const std::array<Histogram, 3> histograms = histogramsOf(image);
    apply(image, {whitening(histograms[0]), whitening(histograms[1]), whitening(histograms[2])});
    return image;
}

} // namespace scanengine
