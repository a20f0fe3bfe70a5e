#pragma once

#include "pipeline/PdfDocument.h"

#include <QImage>

/// The page that the benchmark cases work on: the sample letter, A4 at 300 dpi, 8-bit grey.
///
/// Each answer is made once and kept. A case whose page can't be made ends the program, as its
/// figure would mean nothing.
namespace bench {

[[nodiscard]] const QImage &samplePage();

/// The same reduced to 1800 pixels, as the editor previews it.
[[nodiscard]] const QImage &previewPage();

/// The same as the page of a scan: a JPEG with a line of invisible text.
[[nodiscard]] const velmor::PdfPage &samplePdfPage();

} // namespace bench
