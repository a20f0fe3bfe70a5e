#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/imaging/PageOutline.h"

#include <QImage>

namespace scanengine {

/// By how many degrees, clockwise, `page` on `image` is turned: as its text says, or else its
/// edges. Nothing without evidence of either.
[[nodiscard]] std::optional<double> pageSkew(const QImage &image,
                                             const std::optional<PageOutline> &page);

/// `image`, 8-bit grey or RGB32 with square pixels, cropped and straightened as `switches` ask.
///
/// crop leaves the rectangle around the paper; where that isn't certain, the whole bed. Without
/// deskew it is the upright box around the paper as it lies, in whole pixels that stay as scanned.
/// Several sheets are kept together in one rectangle.
///
/// A fixed length (1 to 10,000 mm; others are ignored) is laid on the middle of the paper, up to
/// the bed's own sides; a mode of "auto" overrules it, and where no page is found it is ignored,
/// too.
///
/// deskew turns the page upright by text lines, else by its edges, by at most 15 degrees; a page
/// that shows neither stays, and so do sheets that lie at different angles. Without crop the image
/// grows so that nothing is lost. Pixels are interpolated once for both, and not at all below a
/// twentieth of a degree. What shows no paper then, because it lies past the bed or beside a single
/// straight sheet, takes the colour of the paper nearby; without crop, of the lid nearby.
///
/// If the result were larger than an image may be, `image` comes back as it is.
/// Format and resolution stay. Null if memory runs out.
[[nodiscard]] QImage straightened(QImage image, const AutoSwitches &switches);

} // namespace scanengine
