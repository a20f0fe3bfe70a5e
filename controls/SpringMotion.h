#pragma once

namespace velmor {

/// A moment of a spring's motion, as seen from its rest.
struct SpringMoment {
    double offset = 0;   ///< Distance from the rest, in the unit of the value that moves.
    double velocity = 0; ///< Change of the offset in a second.
};

/// How a spring moves.
struct SpringNature {
    double response = 0.35; ///< Seconds of one full swing if nothing damped it; above 0.
    double damping = 0.8;   ///< 0 swings for ever, below 1 overshoots, from 1 on never does.
};

/// Where the spring is `seconds` after `start`. Exact for any step, so the frame rate is of no
/// influence. Pure; safe on any thread.
[[nodiscard]] SpringMoment springAfter(double seconds, SpringMoment start, SpringNature nature);

} // namespace velmor
