#pragma once

#include "preview/DocumentViewport.h"

namespace velmor {

/// How much of its page a picture shows.
enum class PictureExtent { whole, part };

[[nodiscard]] inline size_t qHash(PictureExtent extent, size_t seed = 0) noexcept
{
    return ::qHash(static_cast<int>(extent), seed);
}

/// A picture of a page, or of a part of it, at one resolution.
struct PictureRequest {
    int page = 0;
    PictureExtent extent = PictureExtent::whole;
    QSize pagePixels; ///< The whole page at this resolution.
    QRect pixels;     ///< What the picture shows of that.
    QRect needed;     ///< What it has to show at least.

    /// Where the picture lies on a page of `sheetSize` points.
    [[nodiscard]] QRectF area(QSizeF sheetSize) const;

    /// Whether a picture made for this serves `wanted` as well.
    [[nodiscard]] bool serves(const PictureRequest &wanted) const;

    bool operator==(const PictureRequest &) const = default;
};

/// Where a box of view space lies in the pixels of a window with so many pixels a unit, moved to
/// whole ones.
[[nodiscard]] QRect windowPixels(const QRectF &box, double devicePixelRatio);

/// The pictures that a view needs to be sharp, the most urgent first: those of the visible pages,
/// then those of the pages before and after, so that scrolling meets them ready.
///
/// A page of a few million pixels is drawn as a whole, to the pixel as the window shows it. A
/// larger one is drawn coarsely as a whole, for what comes into view next, and sharply where it's
/// visible, with some room around. So no picture is much larger than the view or those few
/// million pixels.
[[nodiscard]] QList<PictureRequest> neededPictures(const DocumentViewport &viewport,
                                                   double devicePixelRatio);

} // namespace velmor
