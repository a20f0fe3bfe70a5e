#pragma once

#include <QPointF>

#include <array>

namespace velmor {

/// A region of four corners on an image, such as a sheet of paper that lies at an angle.
///
/// The corners are fractions of the image as it is shown: x and y from 0 to 1, origin at the top
/// left, y downwards. So they serve for the same picture at any size. Their order is that of the
/// upright rectangle which the region becomes.
struct Quad {
    std::array<QPointF, 4> corners; ///< Top left, top right, bottom right, bottom left.

    bool operator==(const Quad &) const = default;
};

/// Whether the region can become a rectangle: all corners on the image, all four turning the same
/// way, and none of them flat. Either way round serves; a line, a spot, a bow tie, or a region with
/// a dent doesn't.
[[nodiscard]] bool isUsable(const Quad &quad);

/// Four corners, given in any order, as a region: of the two upper ones the left is the top left
/// one, of the two lower ones the left is the bottom left one.
[[nodiscard]] Quad orderQuad(std::array<QPointF, 4> points);

} // namespace velmor
