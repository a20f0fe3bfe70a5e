#pragma once

#include "scanengine/Result.h"

#include <QImage>
#include <QString>

namespace scanengine {

/// Reading image files of the kinds PNG, JPEG and TIFF, told by their content. Nothing is
/// allocated for an image beyond `maxPixels`. Any thread.

/// How many pages the file holds, at least 1; no page is read yet.
[[nodiscard]] Result<int> countPages(const QString &path);

/// Page `page` of the file, counted from 0, as 8-bit grey if it is grey, else as RGB32, upright,
/// on white where it was transparent, in sRGB.
///
/// Both resolutions are those the file states, or 300 dpi if it states none: also where it says 72
/// or 96 dpi, as programs do that know no paper, and outside 30 to 4800 dpi. Each axis has its own.
[[nodiscard]] Result<QImage> readPage(const QString &path, int page);

} // namespace scanengine
