#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

namespace velmor {

/// Draws the first page of the PDF file `pdf`, rotation included, on white, at exactly `size`
/// pixels.
///
/// The renderer serves one thread at a time in the whole process, so calls from all threads wait
/// their turn for one thread that is its own; never call this on the main thread. The caller
/// bounds `size`. Nothing if the file can't be drawn.
[[nodiscard]] std::optional<QImage> renderFirstPage(const QByteArray &pdf, QSize size);

} // namespace velmor
