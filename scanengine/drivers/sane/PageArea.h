#pragma once

#include "scanengine/drivers/sane/SaneOptions.h"

#include <QList>
#include <QSizeF>
#include <QStringView>

namespace scanengine {

struct Capture;

/// The switches by which a feeder ends a page where the paper ends.
inline constexpr QStringView paperEndNames[] = {u"ald", u"page-auto-size"};

/// An option that bounds the page, and where the bound is to be, in the option's unit.
struct PageEdge {
    QStringView option;
    double position = 0;
};

/// The bounds of the largest page, in the order in which they are to be set: the whole bed; from a
/// feeder the whole width, and the length of a legal sheet, or 34 inches where the feeder knows
/// the paper's end. Never more than `maxPixels`.
[[nodiscard]] QList<PageEdge> pageEdges(const SaneOptions &options, const Capture &capture);

/// The size of the area that the options have now, in millimetres; empty if they don't tell.
[[nodiscard]] QSizeF pageAreaMm(const SaneOptions &options, const Capture &capture);

} // namespace scanengine
