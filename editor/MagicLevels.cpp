#include "editor/MagicLevels.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// The least distance of the points after the first two clicks.
constexpr double clickGap = 0.05;
/// From one end of the Softness slider to the other gamma changes by this many powers of two.
constexpr double softnessOctaves = 3;

} // namespace

double lowWithin(double value, double high)
{
    return std::min(std::max(value, 0.0), high - levelsMinGap);
}

double highWithin(double value, double low)
{
    return std::max(std::min(value, 1.0), low + levelsMinGap);
}

bool MagicLevels::magicTouched() const
{
    return blackLum > 0 || whiteLum < 1 || gamma != 1;
}

void MagicLevels::click(double luminance)
{
    if (clicksSoFar == 0) {
        blackLum = std::min(luminance, whiteLum - levelsMinGap);
        clicksSoFar = 1;
    } else if (clicksSoFar == 1) {
        const double darker = std::min(blackLum, luminance);
        whiteLum = std::max({blackLum, luminance, darker + clickGap});
        blackLum = darker;
        clicksSoFar = 2;
    } else if (std::abs(luminance - blackLum) <= std::abs(luminance - whiteLum)) {
        blackLum = std::min(luminance, whiteLum - levelsMinGap);
    } else {
        whiteLum = std::max(luminance, blackLum + levelsMinGap);
    }
}

void MagicLevels::setLow(double value)
{
    blackLum = lowWithin(value, whiteLum);
    clicksSoFar = 2;
}

void MagicLevels::setHigh(double value)
{
    whiteLum = highWithin(value, blackLum);
    clicksSoFar = 2;
}

double MagicLevels::softness() const
{
    return 0.5 - std::log2(gamma) / softnessOctaves;
}

void MagicLevels::setSoftness(double softness)
{
    gamma = std::exp2((0.5 - softness) * softnessOctaves);
}

} // namespace velmor
