#pragma once

#include <QColor>
#include <QImage>
#include <QSizeF>

namespace velmor {

/// What casts a shadow: a rounded box of `size` with corners of `radius`. All in device pixels.
struct ShadowBox {
    QSizeF size;
    double radius = 0; ///< At most half of the shorter side counts.
};

/// How many pixels a shadow of the standard deviation `sigma` reaches beyond its box.
[[nodiscard]] int shadowReach(double sigma);

/// The shadow of `box`, blurred by a Gaussian of the standard deviation `sigma`, in `color`. The
/// box lies in the middle of the image, which is larger by the reach on every side.
///
/// The middle row and column may be stretched if half of each side is at least the radius and the
/// reach. Fine noise keeps the fall of colour from showing bands.
[[nodiscard]] QImage shadowMask(const ShadowBox &box, double sigma, const QColor &color);

/// Takes `box` out of the image, with soft edges; its centre lies `offset` from the image's.
void cutOut(QImage &image, const ShadowBox &box, QPointF offset);

} // namespace velmor
