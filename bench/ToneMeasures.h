#pragma once

#include "bench/corpus/PageArt.h"

namespace bench {

/// What became of one page whose truth is known. Shares run from 0 to 1.
///
/// An ink pixel is lost when the mean of the 3x3 pixels around it has less than half of the
/// contrast to the paper that the scanner saw there. Pixels with a contrast of 6 % or more on the
/// sheet itself are asked, each in the channel in which it is darkest. What soft optics took from
/// the edges of strokes is not lost ink: no cleaning brings it back, and at 600 dpi such edges are
/// several pixels wide.
struct CleaningMeasures {
    double inkPixels = 0;
    double lostInk = 0;        ///< Pixels.
    double paperPixels = 0;    ///< Of bare paper, 5 mm from the sides and more.
    double whitePaper = 0;     ///< Pixels of it at 250 or lighter.
    double paperDeviation = 0; ///< Standard deviation over it, in levels.
    double photoError = -1;    ///< Mean difference to the print under even light, in levels.
    double colorKept = -1;     ///< Mean difference between the channels, as a part of the sheet's.
};

/// `seen` is the page of `art` as `corpus::softened` makes it.
[[nodiscard]] CleaningMeasures measureCleaning(const corpus::PageArt &art, const QImage &seen,
                                               const QImage &cleaned);

struct BlackWhiteMeasures {
    double inkPixels = 0; ///< Photographs and light shading aside.
    double lostInk = 0;   ///< Pixels, as above: a pale stroke needs fewer black ones than a dark.
    double paperPixels = 0;
    double salt = 0; ///< Pixels of bare paper that came out black.
};

[[nodiscard]] BlackWhiteMeasures measureBlackWhite(const corpus::PageArt &art, const QImage &seen,
                                                   const QImage &bits);

} // namespace bench
