#include "controls/SpringMotion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace velmor;

namespace {

TEST(SpringMotion, FollowsTheEquationOfADampedSpring)
{
    struct Case {
        const char *what;
        SpringMoment start;
        SpringNature nature;
    };
    const Case cases[] = {
        {"lively",           {100, 0},  {0.25, 0.6}  },
        {"pushed away",      {10, 400}, {0.35, 0.85} },
        {"almost critical",  {1, -3},   {0.4, 0.9999}},
        {"critical",         {1, -3},   {0.4, 1}     },
        {"slow, never over", {-50, 0},  {0.4, 2.5}   },
        {"swings for ever",  {1, 0},    {0.5, 0}     },
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        // Small steps of the equation x'' = -w (2 z x' + w x).
        constexpr int steps = 200'000;
        constexpr double seconds = 0.2;
        const double w = 2 * std::numbers::pi / c.nature.response;
        SpringMoment expected = c.start;
        for (int i = 0; i < steps; ++i) {
            const double pull =
                -w * (2 * c.nature.damping * expected.velocity + w * expected.offset);
            expected.velocity += pull * seconds / steps;
            expected.offset += expected.velocity * seconds / steps;
        }
        const double scale = std::abs(c.start.offset) + std::abs(c.start.velocity) / w;
        const SpringMoment once = springAfter(seconds, c.start, c.nature);
        EXPECT_NEAR(once.offset, expected.offset, scale / 1000);
        EXPECT_NEAR(once.velocity, expected.velocity, scale * w / 1000);

        const SpringMoment twice =
            springAfter(seconds / 3, springAfter(seconds * 2 / 3, c.start, c.nature), c.nature);
        EXPECT_NEAR(twice.offset, once.offset, scale / 1e6);
        EXPECT_NEAR(twice.velocity, once.velocity, scale * w / 1e6);
    }
}

} // namespace
