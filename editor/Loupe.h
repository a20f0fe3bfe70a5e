#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <QString>

#include <optional>

namespace velmor {

/// The lens that shows single pixels of the page beside the pointer.
///
/// A plain value for one place of the pointer.
struct Loupe {
    static constexpr int cells = 21;                     ///< Pixels of the image on each axis.
    static constexpr double cellSize = 6;                ///< Points for each of them.
    static constexpr double diameter = cells * cellSize; ///< Of the lens.

    /// The part of the image in the lens, in whole pixels. It stops at the image's edges, and
    /// reaches beyond them on an image of fewer than `cells` pixels on a side.
    QRect source;
    /// The pixel of the image that is marked and measured.
    QPoint pixel;
    /// The marked cell, from the lens's top left; it frames the very pixel that is measured.
    QRectF marked;
    /// The middle of the lens in the area.
    QPointF center;

    bool operator==(const Loupe &) const = default;
};

/// The loupe for a pointer at `p` of an area of `size`, where `rect` is the rectangle of an image
/// of `image` pixels. Nothing beside the image.
[[nodiscard]] std::optional<Loupe> loupeAt(QPointF p, const QRectF &rect, QSize image, QSizeF size);

/// The middle of a lens of `diameter` for a pointer at `p`: right of it and above; on the left or
/// below where it would leave the area.
[[nodiscard]] QPointF loupePosition(QPointF p, QSizeF size, double diameter);

/// What stands below the lens: the luminance in percent.
[[nodiscard]] QString loupeLabel(double luminance);

} // namespace velmor
