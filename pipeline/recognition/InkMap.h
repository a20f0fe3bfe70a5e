#pragma once

#include <QImage>
#include <QRect>

#include <vector>

namespace velmor {

/// Where a page has ink, on a grid coarse enough to ignore specks.
struct InkMap {
    int width = 0;
    int height = 0;
    int dpi = 75;           ///< Of the grid's cells.
    std::vector<char> dark; ///< 1 for ink, row by row from the top left.

    [[nodiscard]] bool at(int x, int y) const
    {
        return dark[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)] !=
               0;
    }
};

/// The pixels of a page image to one cell of its ink map, along each side.
inline constexpr int inkCell = 4;

/// The ink of a grey page with `dpi`; rests of cells at the right and lower edge are left out.
[[nodiscard]] InkMap inkMap(const QImage &page, int dpi);

/// True when there is next to nothing on the page.
[[nodiscard]] bool isBlank(const InkMap &ink);

/// Changes between paper and ink along the rows of the page: many in text, few in pictures.
[[nodiscard]] int strokeEdges(const InkMap &ink);

/// The square of at most `inches` a side, in pixels of the page, that seems to hold most text.
[[nodiscard]] QRect busiestSquare(const InkMap &ink, double inches);

/// A copy of `page` that is white except for `cells`, cut down to what is around them.
struct PagePart {
    QImage pixels;
    QPoint origin; ///< Of `pixels` in the page.
};
[[nodiscard]] PagePart pagePart(const QImage &page, const InkMap &ink,
                                const std::vector<QRect> &cells);

} // namespace velmor
