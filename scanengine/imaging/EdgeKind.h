#pragma once

#include "scanengine/imaging/LidSearch.h"
#include "scanengine/imaging/SideFit.h"

#include <QImage>

namespace scanengine {

/// What makes an edge visible.
enum class EdgeKind {
    step,   ///< Nearly everywhere its two sides differ: paper in front of another lid.
    shadow, ///< Both sides are alike, and paper throws a shadow that is soft on the lid's side.
    print   ///< Neither: a printed line, or where lines of text begin.
};

/// The kind of the edge `fit` that was found for `guess`. `bed` shows `image` reduced.
[[nodiscard]] EdgeKind edgeKind(const QImage &image, const BedView &bed, const SideGuess &guess,
                                const SideFit &fit);

} // namespace scanengine
