#pragma once

#include "model/EditorViewport.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace velmor {

/// The rectangle that an image of `image` pixels takes when it is fitted into `area`, centred.
/// Empty unless both have an area.
[[nodiscard]] QRectF fittedRect(QSizeF image, QSizeF area);

/// Where the page lies in the editor's image area, and how that changes by zoom and pan.
///
/// A plain value. Places are in points of the area, origin at its top left, y downwards. Without an
/// image or an area there is no rectangle, nothing zooms, and pans are taken as they come.
struct PagePlacement {
    /// The limits of `zoom`.
    static constexpr double smallestZoom = 1;
    static constexpr double largestZoom = 8;

    QSizeF image{0, 0};    ///< Pixels.
    QSizeF viewSize{0, 0}; ///< Of the area.
    double zoom = 1;       ///< Over the fitted page.
    QPointF pan;           ///< From the middle of the area to the middle of the image.

    bool operator==(const PagePlacement &) const = default;

    /// The rectangle of the image. It is centred on an axis on which it fits, and leaves no gap at
    /// an edge on the other, whatever `pan` says.
    [[nodiscard]] QRectF imageRect() const;

    /// The pan nearest to `proposed` that leaves no gap.
    [[nodiscard]] QPointF clampedPan(QPointF proposed) const;

    /// Multiplies the zoom within its limits; the place of the page at `anchor` stays there as far
    /// as the clamp allows. A page that is fitted again is centred.
    void applyZoom(double factor, QPointF anchor);

    /// Moves the page. Does nothing while it is fitted.
    void applyPan(QPointF delta);

    /// Zooms as `viewport` says, and brings its centre to the middle of the area.
    void applyViewport(const EditorViewport &viewport);

    /// Moves the page as little as brings a place of it, given as fractions, within the area.
    void reveal(QPointF place);

    /// Back to the fitted page.
    void fit();

private:
    [[nodiscard]] QPointF middle() const;
    [[nodiscard]] QSizeF zoomedSize() const;
};

} // namespace velmor
