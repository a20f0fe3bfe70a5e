#pragma once

#include "scanengine/imaging/LidSearch.h"

#include <QImage>
#include <opencv2/core.hpp>

#include <vector>

namespace scanengine {

/// The two axes of a page turned by `degrees` clockwise, as unit vectors: to its right and to its
/// bottom.
struct Axes {
    explicit Axes(double degrees);

    cv::Point2d right;
    cv::Point2d down;
};

/// How far things reach along the axes, in pixels of the bed view from its top left corner.
struct Extent {
    double left = 1e9;
    double right = -1e9;
    double top = 1e9;
    double bottom = -1e9;

    void include(const Axes &axes, cv::Point2d point);
    [[nodiscard]] double area() const;
};

/// One thing on the bed, as its edges tell.
struct Sheet {
    double angle = 0;        ///< Degrees clockwise, -15 to 15; 0 if it isn't straight.
    bool isStraight = false; ///< Four sides at right angles; otherwise the extent is merely around.
    bool isSure = false;     ///< Paper beyond doubt. If not, nothing else here counts.
    bool isComplete = false; ///< Every side is an edge or lies on the bed's.
    Extent extent;           ///< Along the axes of `angle`.
};

/// The sheet whose coarse outline is `contour`, one of the items of `guess`. `bed` shows `image`
/// reduced.
[[nodiscard]] Sheet fitSheet(const QImage &image, const BedView &bed, const LidGuess &guess,
                             const std::vector<cv::Point> &contour);

} // namespace scanengine
