#pragma once

#include "model/Models.h"

namespace velmor {

/// The least distance of the black and the white point where one of them is moved.
inline constexpr double levelsMinGap = 0.01;

/// Where a knob stops that is moved to `value`: within 0 to 1, and before the other one.
[[nodiscard]] double lowWithin(double value, double high);
[[nodiscard]] double highWithin(double value, double low);

/// A levels setting in the making, with the rules by which clicks, knobs and the Softness slider
/// change it.
///
/// A plain value. Black and white are luminances of 0 to 1, gamma is an exponent.
struct MagicLevels {
    double blackLum = 0;
    double whiteLum = 1;
    double gamma = 1;
    /// What the next click on the page sets: at 0 the black point, at 1 the white point, from 2 on
    /// the one that is nearer.
    int clicksSoFar = 0;

    bool operator==(const MagicLevels &) const = default;

    /// Whether the levels do anything to the page.
    [[nodiscard]] bool magicTouched() const;
    [[nodiscard]] MagicSettings settings() const { return {blackLum, whiteLum, gamma}; }

    /// A click on a place of this luminance. After the first two, in whatever order, the points are
    /// 0.05 apart at least; the white one may lie above 1 then.
    void click(double luminance);

    /// A knob was moved to a value.
    void setLow(double value);
    void setHigh(double value);

    /// The place of the Softness slider: 0 is crisp, 0.5 is gamma 1, 1 is soft.
    [[nodiscard]] double softness() const;
    void setSoftness(double softness);
};

} // namespace velmor
