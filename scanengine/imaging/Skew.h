#pragma once

#include <QImage>
#include <QPolygonF>

#include <optional>

namespace scanengine {

struct TextSkew {
    double angle = 0;     ///< Degrees clockwise, -15 to 15, to a few hundredths.
    bool isClear = false; ///< Many lines tell it. Otherwise straight edges tell more.
};

/// By how many degrees, clockwise, the text lines or rules of a page are turned.
///
/// `image` is 8-bit grey or RGB32. Only what lies within `paper` counts, a convex polygon in its
/// pixels, and away from its sides; all of the image if `paper` is empty. Lines of vertical scripts
/// count as well as level ones, so a page is never taken for one turned by 90 degrees. Nothing
/// without lines: on blank pages, photographs and drawings. Pure; any thread.
[[nodiscard]] std::optional<TextSkew> textSkew(const QImage &image, const QPolygonF &paper = {});

} // namespace scanengine
