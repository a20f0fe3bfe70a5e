#include "controls/SpringMotion.h"

#include <cmath>
#include <numbers>

// The damped oscillator x'' + 2 z w x' + w^2 x = 0 with w = 2 pi / response and the damping
// fraction z, solved in closed form for each of its three cases.

namespace velmor {

namespace {

SpringMoment underdamped(double t, SpringMoment s, double w, double z)
{
    const double swing = w * std::sqrt(1 - z * z);
    const double sine = (s.velocity + z * w * s.offset) / swing;
    const double decay = std::exp(-z * w * t);
    const double c = std::cos(swing * t);
    const double n = std::sin(swing * t);
    return {decay * (s.offset * c + sine * n),
            decay * (s.velocity * c - (z * w * sine + swing * s.offset) * n)};
}

SpringMoment critical(double t, SpringMoment s, double w)
{
    const double slope = s.velocity + w * s.offset;
    const double decay = std::exp(-w * t);
    return {decay * (s.offset + slope * t), decay * (s.velocity - w * slope * t)};
}

SpringMoment overdamped(double t, SpringMoment s, double w, double z)
{
    const double spread = w * std::sqrt(z * z - 1);
    const double slow = -z * w + spread;
    const double fast = -z * w - spread;
    const double a = (s.velocity - fast * s.offset) / (slow - fast);
    const double b = s.offset - a;
    return {a * std::exp(slow * t) + b * std::exp(fast * t),
            a * slow * std::exp(slow * t) + b * fast * std::exp(fast * t)};
}

} // namespace

SpringMoment springAfter(double seconds, SpringMoment start, SpringNature nature)
{
    const double w = 2 * std::numbers::pi / nature.response;
    // Next to 1 the other two divide by almost nothing.
    if (std::abs(nature.damping - 1) < 1e-6)
        return critical(seconds, start, w);
    return nature.damping < 1 ? underdamped(seconds, start, w, nature.damping)
                              : overdamped(seconds, start, w, nature.damping);
}

} // namespace velmor
