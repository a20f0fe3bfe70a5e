#include "pipeline/Quad.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// The least turn at a corner, as twice the area of the triangle that it makes with its neighbours,
/// where the image has the area 1. A third of a pixel on the largest image.
constexpr double flattest = 1e-9;

/// Positive where the way from `a` by `corner` to `b` turns clockwise as shown.
double turn(QPointF a, QPointF corner, QPointF b)
{
    const QPointF in = corner - a;
    const QPointF out = b - corner;
    return in.x() * out.y() - in.y() * out.x();
}

bool isOnImage(QPointF point)
{
    return point.x() >= 0 && point.x() <= 1 && point.y() >= 0 && point.y() <= 1;
}

} // namespace

bool isUsable(const Quad &quad)
{
    const auto &c = quad.corners;
    std::array<double, 4> turns{};
    for (size_t i = 0; i < c.size(); ++i)
        turns[i] = turn(c[(i + 3) % 4], c[i], c[(i + 1) % 4]);
    const bool clockwise = std::ranges::all_of(turns, [](double t) { return t > flattest; });
    const bool mirrored = std::ranges::all_of(turns, [](double t) { return t < -flattest; });
    return (clockwise || mirrored) && std::ranges::all_of(c, isOnImage);
}

Quad orderQuad(std::array<QPointF, 4> points)
{
    const auto x = [](const QPointF &point) {
        return point.x();
    };
    std::ranges::stable_sort(points, {}, [](const QPointF &point) { return point.y(); });
    const auto [left, right] = std::ranges::minmax({points[0], points[1]}, {}, x);
    const auto [lowerLeft, lowerRight] = std::ranges::minmax({points[2], points[3]}, {}, x);
    return {
        {left, right, lowerRight, lowerLeft}
    };
}

} // namespace velmor
