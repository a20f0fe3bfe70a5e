#pragma once

#include "bench/corpus/SheetArt.h"

#include <QImage>
#include <QList>
#include <QPointF>
#include <QPolygonF>
#include <QSizeF>

#include <cstdint>
#include <vector>

namespace corpus {

enum class Outline { straight, rounded, dogEared, torn };

/// A sheet and where it lies on the bed. Lengths in millimetres from the bed's top left corner.
struct PlacedSheet {
    Sheet sheet;
    QSizeF size;
    QPointF center;
    double angle = 0; ///< Degrees, clockwise.
    Outline outline = Outline::straight;
};

/// The bed, its lid and what light and sensor make of them.
struct Bed {
    QSizeF size = {216, 297}; ///< Millimetres.
    int dpi = 150;
    QRgb lid = 0;
    double lidGrain = 0;    ///< Standard deviation of a coarse grain in the lid, in levels.
    double shadow = 0;      ///< How much darker the lid is beside the sheets, in levels.
    double shadowWidth = 1; ///< Millimetres.
    QPointF shadowSide;     ///< Millimetres by which the shadow is moved.
    double noise = 0;       ///< Standard deviation of the sensor's noise, in levels.
    double falloff = 0;     ///< Share of the light that is missing at the darkest side.
    int dust = 0;           ///< Specks on the glass.
};

/// What a scanner sees, and the truth about it. Points in pixels from the image's top left corner.
struct BedScene {
    QImage image;                 ///< RGB32, states its resolution.
    QList<QPolygonF> papers;      ///< Four corners each, clockwise from the sheet's own top left.
    std::vector<QPointF> content; ///< A sample of the pixels that must not be cut, within the bed.
    double angle = 0;             ///< That of the first sheet; degrees clockwise.

    /// How far content lies outside of the rectangle of `size` about `center` that is turned
    /// clockwise by `degrees`; in pixels, 0 if none does.
    [[nodiscard]] double contentBeyond(QPointF center, QSizeF size, double degrees) const;
};

/// `seed` settles grain, noise and dust.
[[nodiscard]] BedScene renderBed(const Bed &bed, const std::vector<PlacedSheet> &sheets,
                                 std::uint64_t seed);

} // namespace corpus
