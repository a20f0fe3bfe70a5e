#pragma once

#include "pipeline/recognition/InkMap.h"

#include <QRect>

#include <optional>
#include <vector>

namespace velmor {

/// The text blocks of an upright page in reading order, columns from the left: rectangles in cells
/// that together cover the whole map once. Blocks are cut apart only at gaps wider than those
/// between lines; the rows of a table stay whole.
[[nodiscard]] std::vector<QRect> textBlocks(const InkMap &ink);

/// A page in two parts to be read at the same time; the first comes first in reading order. Both
/// together cover the map once; rectangles in cells.
struct PageHalves {
    std::vector<QRect> first;
    std::vector<QRect> second;

    bool operator==(const PageHalves &) const = default;
};

/// The page's blocks in two halves that take about the same time to read. Nothing when there is too
/// little text, or no gap that would leave each half a fair share.
[[nodiscard]] std::optional<PageHalves> splitPage(const InkMap &ink);

} // namespace velmor
