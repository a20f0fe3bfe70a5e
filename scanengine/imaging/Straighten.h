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
/// crop leaves the rectangle around the paper; where that isn't certain, the whole bed. A fixed
/// width or height is laid on the middle of the paper instead, up to the bed's own sides; a mode
/// of "auto" overrules it. deskew turns the page upright by text lines, else by its edges, by at
/// most 15 degrees; a page that shows neither stays. Without crop the image grows so that nothing
/// is lost. Pixels are interpolated once, and not at all below a twentieth of a degree; areas that
/// show no paper then take its colour.
///
/// Format and resolution stay. Null if memory runs out.
[[nodiscard]] QImage straightened(QImage image, const AutoSwitches &switches);

} // namespace scanengine
