#include "browser/Thumbnail.h"

#include "pipeline/PdfDocument.h"
#include "pipeline/Renderer.h"

#include <algorithm>

namespace velmor {

namespace {

/// Cells are drawn for at least this width, in points, so that enlarging them takes no new work.
constexpr double leastWidth = 220;
constexpr double pixelsPerPoint = 2;

} // namespace

double Thumbnail::ratioOf(QSizeF size)
{
    return std::clamp(size.height() / std::max(size.width(), 1.0), 0.3, 3.4);
}

std::optional<Thumbnail> renderThumbnail(const QUrl &url, double width)
{
    const std::optional<PdfDocument> document = PdfDocument::open(url);
    const std::optional<PdfPage> page = document ? document->page(0) : std::nullopt;
    if (!page)
        return std::nullopt;
    const QSizeF box = page->mediaBox().size();
    const double ratio = Thumbnail::ratioOf(page->isTurned() ? box.transposed() : box);
    const double pixels = pixelsPerPoint * std::max(width, leastWidth);
    // A page beyond the limits of the ratio keeps its shape within the cell.
    const QSizeF shown = page->isTurned() ? box.transposed() : box;
    const QSize size = shown.scaled(QSizeF(pixels, pixels * ratio), Qt::KeepAspectRatio).toSize();
    const std::optional<QByteArray> bytes = page->renderingBytes(page->mediaBox());
    if (!bytes)
        return std::nullopt;
    std::optional<QImage> image =
        Renderer::shared().picture(*bytes, size.expandedTo(QSize(1, 1)), Renderer::Use::glimpse);
    if (!image)
        return std::nullopt;
    return Thumbnail{*std::move(image), ratio};
}

} // namespace velmor
