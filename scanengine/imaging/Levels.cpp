#include "scanengine/imaging/Levels.h"

#include "scanengine/imaging/ToneCurve.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace scanengine {
namespace {

/// Levels over which a curve bends at most before it reaches black or white.
constexpr double longestBend = 64;

/// The smaller of `level` and 255, rounded off from 255 - `bend` to 255 + `bend` by the parabola
/// that has the slopes of both sides.
double heldBelowWhite(double level, double bend)
{
    if (level <= 255 - bend)
        return level;
    if (level >= 255 + bend)
        return 255;
    const double into = level - (255 - bend);
    return level - into * into / (4 * bend);
}

} // namespace

QImage withLevels(QImage image, int brightness, int contrast)
{
    if (brightness == 0 && contrast == 0)
        return image;
    const double shift = std::clamp(brightness, -1000, 1000) / 3.0;
    const double steepness = 1 + std::abs(std::clamp(contrast, -1000, 1000)) / 900.0;
    const double spread = contrast < 0 ? 1 / steepness : steepness;
    const auto line = [&](double level) {
        return (level + shift - 128) * spread + 128;
    };
    // No further than needed: a line that ends at white has no bend.
    const double whiteBend = std::clamp(line(255) - 255, 0.0, longestBend);
    const double blackBend = std::clamp(-line(0), 0.0, longestBend);
    ToneCurve curve;
    for (size_t level = 0; level < curve.size(); ++level) {
        const double below = heldBelowWhite(line(double(level)), whiteBend);
        curve[level] = uchar(std::lround(255 - heldBelowWhite(255 - below, blackBend)));
    }
    return withToneCurve(std::move(image), curve);
}

} // namespace scanengine
