#pragma once

#include <QImage>

namespace corpus {

/// What a scanner makes of a sheet. The defaults are a perfect one.
struct Exposure {
    double blurMm = 0;       ///< Standard deviation of the optics' softness.
    double noise = 0;        ///< Standard deviation of the sensor's, in levels of 255.
    double falloff = 0;      ///< The part of the light that is missing at the darkest corner.
    double gutter = 0;       ///< The part that is missing in a soft shadow along the left edge.
    double warmth = 0;       ///< The part of the blue light that the lamp lacks.
    double fringePixels = 0; ///< How far red and blue are displaced, in opposite directions.
    int jpegQuality = 0;     ///< 0 for none: the scanner gives pixels.
    bool isGrey = false;     ///< Scanned without colours: 8-bit grey.
    quint32 seed = 1;
};

/// `sheet`, which is RGB32, as sharp as the scanner sees it, and else as it is: evenly lit and
/// without noise.
[[nodiscard]] QImage softened(const QImage &sheet, const Exposure &exposure);

/// `sheet`, which is RGB32, as it comes from the scanner; RGB32 or 8-bit grey.
[[nodiscard]] QImage exposed(const QImage &sheet, const Exposure &exposure);

/// Exposures as they occur, from good to poor, chosen by `seed`.
[[nodiscard]] Exposure exposureOf(quint32 seed);

} // namespace corpus
