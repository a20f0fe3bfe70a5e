#include "editor/LevelsAnalysis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

namespace velmor {

namespace {

using Bins = std::array<int, 256>;

/// Pixels of the grid on which `autoLevels` looks at a page: one in nine.
constexpr int gridStart = 1;
constexpr int gridStep = 3;
/// How far from a pixel the neighbour is that an edge is looked for to, and the grid's distance
/// from the right and lower end.
constexpr int edgeReach = 2;

int luminance(const unsigned char *pixel)
{
    return (299 * pixel[0] + 587 * pixel[1] + 114 * pixel[2]) / 1000;
}

const unsigned char *pixelAt(const RgbaSample &sample, int x, int y)
{
    return sample.buf.data() +
           4 * (static_cast<size_t>(y) * static_cast<size_t>(sample.w) + static_cast<size_t>(x));
}

/// What a page consists of: how bright its pixels are, and how many of them have colour.
struct Statistics {
    Bins hist{};
    int total = 0;
    int colored = 0;
};

/// The brightness on the dark and the light side of the edges of print.
struct Edges {
    Bins lows{};
    Bins highs{};
    int edges = 0;
};

template <typename Visit> void visitGrid(const RgbaSample &sample, Visit visit)
{
    for (int y = gridStart; y < sample.h - edgeReach; y += gridStep)
        for (int x = gridStart; x < sample.w - edgeReach; x += gridStep)
            visit(x, y);
}

Statistics statisticsOf(const RgbaSample &sample)
{
    Statistics found;
    visitGrid(sample, [&](int x, int y) {
        const unsigned char *pixel = pixelAt(sample, x, y);
        const int l = luminance(pixel);
        ++found.hist[static_cast<size_t>(l)];
        ++found.total;
        const auto [least, most] = std::minmax({pixel[0], pixel[1], pixel[2]});
        if (most - least > 32 && l > 40 && l < 230)
            ++found.colored;
    });
    return found;
}

/// The luminance from which on a pixel may be paper: somewhat below the median of the page, pixels
/// near black and white apart.
int paperFloor(const Bins &hist)
{
    constexpr size_t first = 3;
    constexpr size_t last = 252;
    int inRange = 0;
    for (size_t i = first; i <= last; ++i)
        inRange += hist[i];
    int median = 128;
    int sum = 0;
    for (size_t i = first; inRange > 0 && i <= last; ++i) {
        sum += hist[i];
        if (sum >= inRange / 2) {
            median = static_cast<int>(i);
            break;
        }
    }
    return std::max(median - 12, 24);
}

/// Steps in brightness that end on paper.
Edges edgesOf(const RgbaSample &sample, int floor)
{
    Edges found;
    visitGrid(sample, [&](int x, int y) {
        const int l0 = luminance(pixelAt(sample, x, y));
        for (const unsigned char *neighbour :
             {pixelAt(sample, x + edgeReach, y), pixelAt(sample, x, y + edgeReach)}) {
            const auto [lo, hi] = std::minmax({l0, luminance(neighbour)});
            if (hi - lo < 14 || hi < floor || lo <= 2 || hi >= 253)
                continue;
            ++found.lows[static_cast<size_t>(lo)];
            ++found.highs[static_cast<size_t>(hi)];
            ++found.edges;
        }
    });
    return found;
}

/// The first bin at which the sum of the bins reaches a share of all edges.
int percentile(const Bins &bins, int edges, double fraction)
{
    const int target = static_cast<int>(edges * fraction);
    int sum = 0;
    for (size_t i = 0; i < bins.size(); ++i) {
        sum += bins[i];
        if (sum >= target)
            return static_cast<int>(i);
    }
    return 255;
}

/// The counts of the bins once the levels have moved what is in them.
QList<int> remapped(const QList<int> &raw, const MagicLevels &levels)
{
    const auto n = static_cast<double>(raw.size());
    const double range = std::max(levels.whiteLum - levels.blackLum, 0.02);
    QList<int> counts(raw.size(), 0);
    for (qsizetype i = 0; i < raw.size(); ++i) {
        const double v = (static_cast<double>(i) + 0.5) / n;
        const double t = std::clamp((v - levels.blackLum) / range, 0.0, 1.0);
        const auto j = static_cast<qsizetype>(std::pow(t, levels.gamma) * (n - 1));
        counts[std::clamp(j, qsizetype(0), raw.size() - 1)] += raw[i];
    }
    return counts;
}

/// The count that is drawn at full height: the 90th percentile of those above 0.
int referenceOf(const QList<int> &counts)
{
    QList<int> filled;
    std::ranges::copy_if(counts, std::back_inserter(filled), [](int c) { return c > 0; });
    if (filled.isEmpty())
        return 1;
    const auto place = static_cast<qsizetype>(static_cast<double>(filled.size()) * 0.9);
    const auto at = filled.begin() + std::min(filled.size() - 1, place);
    std::ranges::nth_element(filled, at);
    return *at;
}

} // namespace

std::optional<RgbaSample> rgbaBuffer(const QImage &image)
{
    const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    if (rgba.isNull())
        return std::nullopt;
    RgbaSample sample{.buf = {}, .w = rgba.width(), .h = rgba.height()};
    const auto rowBytes = 4 * static_cast<size_t>(sample.w);
    try {
        sample.buf.reserve(rowBytes * static_cast<size_t>(sample.h));
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
    for (int y = 0; y < sample.h; ++y) {
        const uchar *row = rgba.constScanLine(y);
        sample.buf.insert(sample.buf.end(), row, row + rowBytes);
    }
    return sample;
}

QList<int> histogram64(const RgbaSample &sample)
{
    QList<int> bins(64, 0);
    for (size_t i = 0; i + 3 < sample.buf.size(); i += 4)
        ++bins[luminance(sample.buf.data() + i) / 4];
    return bins;
}

QPoint samplePixel(QPointF place, int w, int h)
{
    return {std::clamp(static_cast<int>(place.x() * w), 0, w - 1),
            std::clamp(static_cast<int>(place.y() * h), 0, h - 1)};
}

double sampleLuminance(const RgbaSample &sample, QPointF place)
{
    const QPoint at = samplePixel(place, sample.w, sample.h);
    const unsigned char *pixel = pixelAt(sample, at.x(), at.y());
    return (299 * pixel[0] + 587 * pixel[1] + 114 * pixel[2]) / 255000.0;
}

MagicLevels autoLevels(const RgbaSample &sample)
{
    const Statistics page = statisticsOf(sample);
    const Edges print = edgesOf(sample, paperFloor(page.hist));
    double black = 0.8;
    double white = 0.95;
    if (print.edges > 200) {
        black = percentile(print.lows, print.edges, 0.8) / 255.0;
        white = percentile(print.highs, print.edges, 0.15) / 255.0;
        // Colour worth keeping.
        if (page.total > 0 && static_cast<double>(page.colored) / page.total > 0.02) {
            black = std::min(black, 0.45);
            white = std::max(white, 0.88);
        }
    }
    constexpr double gap = 0.06;
    black = std::min(black, white - gap);
    if (white - black < gap)
        black = std::max(0.0, white - gap);
    return {.blackLum = std::max(0.0, black),
            .whiteLum = std::min(std::max(white, black + gap), 1.0),
            .gamma = 0.85,
            .clicksSoFar = 2};
}

QList<double> displayHistogram(const QList<int> &raw, const MagicLevels &levels)
{
    const QList<int> counts = levels.magicTouched() ? remapped(raw, levels) : raw;
    const double ref = referenceOf(counts);
    QList<double> bars;
    bars.reserve(counts.size());
    for (const int count : counts)
        bars.append(count > 0 ? std::min(std::sqrt(count / ref), 1.0) : 0);
    return bars;
}

} // namespace velmor
