#include "pipeline/PageSource.h"

#include "pipeline/PageRaster.h"
#include "pipeline/RawStore.h"

namespace velmor {

std::optional<QUrl> rawIfValid(const PdfDocument &document, int index, const QUrl &location)
{
    const std::optional<PdfPage> page = document.page(index);
    if (!page || page->rotation() % 360 != 0 ||
        RawStore::pageCount(location) != document.pageCount())
        return std::nullopt;
    return RawStore::pageURL(location, index);
}

std::optional<QImage> sourceImage(const PdfPage &page, double dpi, const std::optional<QUrl> &raw)
{
    std::optional<QImage> image = raw ? RawStore::image(*raw) : std::nullopt;
    return image ? image : PageRaster::render(page, PageRaster::Dpi{dpi});
}

} // namespace velmor
