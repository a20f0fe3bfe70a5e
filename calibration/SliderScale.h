#pragma once

#include <cmath>

/// How brightness and contrast stand on their sliders: a slider goes from -100 to 100, the setting
/// behind it from -1000 to 1000.
namespace velmor::SliderScale {

inline constexpr double end = 100;

/// Where the slider stands for a setting.
[[nodiscard]] constexpr double position(int setting)
{
    return setting / 10.0;
}

/// The setting that a slider moved to `position` means: the nearest, of two the one further from 0.
[[nodiscard]] inline int setting(double position)
{
    return static_cast<int>(std::lround(position * 10));
}

/// The whole number beside the slider, towards 0.
[[nodiscard]] constexpr int readout(double position)
{
    return static_cast<int>(position);
}

} // namespace velmor::SliderScale
