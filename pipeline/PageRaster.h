#pragma once

#include "pipeline/EncodedImage.h"
#include "pipeline/OcrLine.h"
#include "pipeline/PdfDocument.h"

#include <QImage>

#include <optional>
#include <span>

/// Pixel work on pages: a PDF page to an image, and an image to a PDF page.
///
/// Pure functions of their arguments, for any thread; rendering waits for a process that draws one
/// page at a time, so it is kept off the main thread. Image coordinates have their origin at the
/// top left, page space at the lower left; page sizes are points. Nothing is the answer wherever
/// memory or the page itself doesn't allow the work, and no image beyond `RawStore::maxPixels` is
/// made.
namespace velmor::PageRaster {

/// The most pixels that a point becomes: 576 dpi.
inline constexpr double maxScale = 8;

/// The length in pixels that the longer side of a rendering gets.
struct MaxDim {
    double pixels;
};

/// Dots per inch of a rendering.
struct Dpi {
    double value;
};

/// The page as shown, rotation included, on white; its longer side has `maxDim` pixels unless
/// that takes more than `maxScale`.
[[nodiscard]] std::optional<QImage> render(const PdfPage &page, MaxDim maxDim);

/// The page as shown, rotation included, on white, at `dpi` or `maxScale` if that is less.
[[nodiscard]] std::optional<QImage> render(const PdfPage &page, Dpi dpi);

/// The part of the page within `part`, in page space and within the crop box, as shown, rotation
/// included, on white, at exactly `pixels`. For the screen: a page that takes long is given up
/// sooner than the others.
[[nodiscard]] std::optional<QImage> render(const PdfPage &page, const QRectF &part, QSize pixels);

/// `image` reduced so that its longer side has at most `maxDim` pixels; the image itself if it
/// fits. New sides are truncated to whole pixels, and at least 1.
[[nodiscard]] std::optional<QImage> downscale(const QImage &image, double maxDim);

/// Levels on each colour channel: `(s * (v - lo)) ^ gamma` on encoded values `v` of 0 to 1, with
/// `lo` and `hi` the smaller and larger of `black` and `white`, kept at least 0.01 apart, and
/// `s = 1 / (hi - lo)`; below `lo` gives 0, above `hi` gives 1. Transparency stays. The result has
/// 8 bits a channel.
[[nodiscard]] std::optional<QImage> applyLevels(const QImage &image, double black, double white,
                                                double gamma);

/// A page of `size` points that shows `image` over its whole box, with `lines` as invisible text
/// under the words: each line's font size follows its box's height, its width is fitted by
/// stretching. Lines without width, or not above one point high, are left out.
[[nodiscard]] std::optional<PdfPage> makePage(const EncodedImage &image, QSizeF size,
                                              std::span<const OcrLine> lines);

} // namespace velmor::PageRaster
