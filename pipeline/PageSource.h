#pragma once

#include "pipeline/PdfDocument.h"

#include <QImage>
#include <QUrl>

#include <optional>

/// Where the pixels come from that an edit of a page starts with.
namespace velmor {

/// The raw image of the page at the zero-based `index` of `document`, which is the file at
/// `location`. It shows the page as it was scanned, so there is none that serves if the document
/// hasn't got as many pages as raw images, or if the page was turned since. Touches file names
/// alone. Nothing also for an index outside.
[[nodiscard]] std::optional<QUrl> rawIfValid(const PdfDocument &document, int index,
                                             const QUrl &location);

/// The image file `raw`; where there is none that can be read, the page as shown, drawn at `dpi`.
/// For background threads. Nothing if neither can be had.
[[nodiscard]] std::optional<QImage> sourceImage(const PdfPage &page, double dpi,
                                                const std::optional<QUrl> &raw);

} // namespace velmor
