#include "bench/SamplePage.h"

#include "pipeline/PageRaster.h"
#include "pipeline/RawStore.h"

#include <QUrl>

#include <array>

using namespace velmor;

namespace bench {

namespace {

template <typename T> T made(std::optional<T> value, const char *what)
{
    if (!value)
        qFatal("Couldn't make %s.", what);
    return *std::move(value);
}

PdfPage pdfPage()
{
    const auto image = made(jpegImage(samplePage(), 0.85), "the sample page's JPEG");
    const std::array lines{
        OcrLine{QStringLiteral("The Tidewell Bindery"), QRectF(0.25, 0.9, 0.5, 0.03)}
    };
    return made(PageRaster::makePage(image, QSizeF(595.2, 841.92), lines), "the sample PDF page");
}

} // namespace

const QImage &samplePage()
{
    static const QImage page =
        made(RawStore::image(QUrl::fromLocalFile(QStringLiteral(BENCH_PAGE_FILE))), BENCH_PAGE_FILE)
            .convertToFormat(QImage::Format_Grayscale8);
    return page;
}

const QImage &previewPage()
{
    static const QImage page = made(PageRaster::downscale(samplePage(), 1800), "the preview");
    return page;
}

const PdfPage &samplePdfPage()
{
    static const PdfPage page = pdfPage();
    return page;
}

} // namespace bench
