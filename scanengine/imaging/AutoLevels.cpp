#include "scanengine/imaging/Levels.h"
#include "scanengine/imaging/PixelView.h"
#include "scanengine/imaging/ToneCurve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace scanengine {
namespace {

/// Fine enough for strokes.
constexpr double measuringDpi = 150;
/// The strip along each side that isn't measured: shadows and slivers of the lid lie there.
constexpr double rimMm = 5;
/// The parts of an image that may be darker than black, and lighter than white.
constexpr double darkShare = 0.0005;
constexpr double lightShare = 0.002;
/// A level that this part of an image has, give or take one, is that of its paper.
constexpr double paperShare = 0.12;
/// The darkest level that becomes black, and the darkest that becomes white.
constexpr int mostBlack = 64;
constexpr int leastWhite = 128;
/// Changes this small aren't worth it, in levels.
constexpr int leastGain = 4;

struct Histogram {
    std::array<int, 256> counts{};
    int total = 0;

    [[nodiscard]] int darkest(double share) const
    {
        double left = share * total;
        int level = 0;
        while (level < 255 && (left -= counts[size_t(level)]) >= 0)
            ++level;
        return level;
    }
    [[nodiscard]] int lightest(double share) const
    {
        double left = share * total;
        int level = 255;
        while (level > 0 && (left -= counts[size_t(level)]) >= 0)
            --level;
        return level;
    }
    [[nodiscard]] int around(int level) const
    {
        return counts[size_t(level - 1)] + counts[size_t(level)] + counts[size_t(level + 1)];
    }
};

/// The histogram of the least and of the greatest channel.
std::pair<Histogram, Histogram> measured(const QImage &image)
{
    Histogram least;
    Histogram greatest;
    const ReducedImage small = reduced(image, measuringDpi);
    if (small.pixels.empty())
        return {};
    const int rim = std::min(int(rimMm * small.pixelsPerMm),
                             std::min(small.pixels.cols, small.pixels.rows) / 4);
    const int bytes = small.pixels.channels();
    for (int y = rim; y < small.pixels.rows - rim; ++y) {
        const uchar *pixel = small.pixels.ptr(y) + rim * bytes;
        for (int x = rim; x < small.pixels.cols - rim; ++x, pixel += bytes) {
            const auto [low, high] =
                bytes == 1 ? std::pair(pixel[0], pixel[0])
                           : std::pair<uchar, uchar>(std::minmax({pixel[0], pixel[1], pixel[2]}));
            ++least.counts[low];
            ++greatest.counts[high];
        }
    }
    least.total = greatest.total = (small.pixels.cols - 2 * rim) * (small.pixels.rows - 2 * rim);
    return {least, greatest};
}

/// The level to become white: that of the paper, where there is some, else the lightest.
int whitePoint(const Histogram &levels)
{
    const int lightest = levels.lightest(lightShare);
    int paper = 0;
    for (int level = lightest; level > leastWhite; --level) {
        if (level < 255 && levels.around(level) >= paperShare * levels.total &&
            (paper == 0 || levels.around(level) > levels.around(paper)))
            paper = level;
    }
    return std::max(leastWhite, paper > 0 ? paper : lightest);
}

} // namespace

QImage withAutoLevels(QImage image)
{
    const auto [least, greatest] = measured(image);
    if (least.total == 0)
        return image;
    const int black = std::min(mostBlack, least.darkest(darkShare));
    const int white = whitePoint(greatest);
    const bool isEven = greatest.lightest(0) - least.darkest(0) < leastGain;
    if (isEven || (black < leastGain && white > 255 - leastGain))
        return image;
    ToneCurve curve;
    for (int level = 0; level < 256; ++level) {
        const double value = 255.0 * (level - black) / (white - black);
        curve[size_t(level)] = uchar(std::lround(std::clamp(value, 0.0, 255.0)));
    }
    return withToneCurve(std::move(image), curve);
}

} // namespace scanengine
