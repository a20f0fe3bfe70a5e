#include "calibration/AutoTune.h"

#include <algorithm>
#include <array>

// The sample is reduced and its luminances are counted. Contrast is what stretches the span between
// two percentiles to the whole scale, brightness what moves the middle of that span to the middle
// of the scale.

namespace velmor {

namespace {

/// The width that a sample is reduced to, in pixels. A narrower one keeps its own.
constexpr int measuredWidth = 200;
constexpr double darkShare = 0.05;
constexpr double lightShare = 0.95;
/// A flatter page counts as one whose levels span this many.
constexpr int leastSpan = 8;
constexpr int middle = 128;

constexpr double contrastForDouble = 900;
constexpr double mostContrast = 850;
constexpr double brightnessForLevel = 3;
constexpr double mostBrightness = 400;

using Histogram = std::array<qint64, 256>;

QImage reduced(const QImage &sample)
{
    const int width = std::min(sample.width(), measuredWidth);
    const qint64 height = qint64(sample.height()) * width / std::max(sample.width(), 1);
    // Levels that come from a table can't be averaged.
    const bool isIndexed = sample.colorCount() > 0;
    return (isIndexed ? sample.convertToFormat(QImage::Format_ARGB32_Premultiplied) : sample)
        .scaled(width, static_cast<int>(std::max<qint64>(1, height)), Qt::IgnoreAspectRatio,
                Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGBA8888_Premultiplied);
}

/// Of red, green and blue as they are stored: what is transparent counts as darker.
Histogram luminances(const QImage &pixels)
{
    Histogram counts{};
    for (int y = 0; y < pixels.height(); ++y) {
        const uchar *pixel = pixels.constScanLine(y);
        for (const uchar *end = pixel + 4 * pixels.width(); pixel != end; pixel += 4) {
            const int luminance = (299 * pixel[0] + 587 * pixel[1] + 114 * pixel[2]) / 1000;
            ++counts[static_cast<size_t>(std::clamp(luminance, 0, 255))];
        }
    }
    return counts;
}

/// The first level at which `share` of all `total` pixels are no lighter.
int percentile(const Histogram &counts, qint64 total, double share)
{
    const auto target = static_cast<qint64>(static_cast<double>(total) * share);
    qint64 sum = 0;
    for (size_t level = 0; level < counts.size(); ++level) {
        sum += counts[level];
        if (sum >= target)
            return static_cast<int>(level);
    }
    return 255;
}

} // namespace

std::optional<Tones> autoTune(const QImage &sample)
{
    if (sample.isNull())
        return std::nullopt;
    const QImage pixels = reduced(sample);
    if (pixels.isNull())
        return std::nullopt;
    const Histogram counts = luminances(pixels);
    const qint64 total = qint64(pixels.width()) * pixels.height();
    const int low = percentile(counts, total, darkShare);
    const int high = percentile(counts, total, lightShare);
    const int span = std::max(leastSpan, high - low);
    const int mid = (low + high) / 2;
    const double contrast = std::min(mostContrast, (255.0 / span - 1) * contrastForDouble);
    const double brightness =
        std::clamp((middle - mid) * brightnessForLevel, -mostBrightness, mostBrightness);
    return Tones{.brightness = static_cast<int>(brightness),
                 .contrast = static_cast<int>(contrast)};
}

} // namespace velmor
