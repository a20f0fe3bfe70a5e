#include "pipeline/VisionOCR.h"

#include "pipeline/EncodedImage.h"
#include "pipeline/PageRaster.h"
#include "pipeline/PageSource.h"
#include "pipeline/Perspective.h"
#include "pipeline/RawStore.h"
#include "pipeline/TextRecognition.h"
#include "pipeline/WithoutExceptions.h"

#include <QCoroFuture>
#include <QFile>
#include <QScopeGuard>
#include <QtConcurrent>

#include <utility>

namespace velmor::VisionOCR {

namespace {

/// JPEG quality, 0 to 1, of pages from the engine, and of pages made anew from older ones.
constexpr double assemblyQuality = 0.85;
constexpr double rebuildQuality = 0.8;

constexpr double pointsPerInch = 72;

std::optional<EncodedImage> compressed(const QImage &image, double quality)
{
    std::optional<EncodedImage> jpeg = jpegImage(image, quality);
    return jpeg ? jpeg : losslessImage(image);
}

/// A file that is a JPEG already goes into the document as it is; a second compression would only
/// cost quality. Anything else but PNG keeps every pixel.
std::optional<EncodedImage> encodedFile(const QString &path, const QImage &image)
{
    if (path.toLower().endsWith(QLatin1String(".png")))
        return compressed(image, assemblyQuality);
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        const std::optional<EncodedImage> jpeg = jpegFileImage(file.readAll());
        if (jpeg && jpeg->size == image.size())
            return jpeg;
    }
    return losslessImage(image);
}

/// Recognises the text of `image` while `encode` runs on another thread, and makes the page.
template <typename Encode>
std::optional<PdfPage> pageWithText(const QImage &image, QSizeF size, Encode encode)
{
    QFuture<std::optional<EncodedImage>> encoding = inBackground(encode);
    // It reads what the caller owns, so it ends first, whatever happens here.
    const auto finish = qScopeGuard([&] { encoding.waitForFinished(); });
    const std::vector<OcrLine> lines = recognizeSync(image);
    // Not taken: a future whose result was taken never ends for those who wait for it.
    const std::optional<EncodedImage> encoded = encoding.result();
    return encoded ? PageRaster::makePage(*encoded, size, lines) : std::nullopt;
}

template <typename Encode>
std::optional<PdfPage> builtPage(const QImage &image, QSizeF size, bool ocr, Encode encode)
{
    if (ocr)
        return pageWithText(image, size, encode);
    const std::optional<EncodedImage> encoded = encode();
    return encoded ? PageRaster::makePage(*encoded, size, {}) : std::nullopt;
}

std::optional<PdfPage> pageFromFile(const QString &path, double dpi, bool ocr)
{
    return withoutExceptions([&]() -> std::optional<PdfPage> {
        const std::optional<QImage> image = RawStore::image(QUrl::fromLocalFile(path));
        if (!image)
            return std::nullopt;
        const QSizeF size = image->size().toSizeF() * (pointsPerInch / dpi);
        return builtPage(*image, size, ocr, [&] { return encodedFile(path, *image); });
    });
}

std::optional<PdfPage> rebuiltPage(const PdfPage &page, double dpi,
                                   const std::optional<MagicSettings> &levels, bool ocr,
                                   const std::optional<QUrl> &raw)
{
    return withoutExceptions([&]() -> std::optional<PdfPage> {
        std::optional<QImage> image = sourceImage(page, dpi, raw);
        if (!image)
            return std::nullopt;
        if (levels) {
            auto levelled =
                PageRaster::applyLevels(*image, levels->black, levels->white, levels->gamma);
            if (levelled)
                image = std::move(levelled);
        }
        return builtPage(*image, page.displayedSize(), ocr,
                         [&] { return compressed(*image, rebuildQuality); });
    });
}

/// One region of `source` as a page, a pixel being as long as where it comes from.
std::optional<PdfPage> croppedPage(const QImage &source, const Quad &box, double pointsPerPixel,
                                   bool ocr)
{
    return withoutExceptions([&]() -> std::optional<PdfPage> {
        const std::optional<QImage> image = correctPerspective(source, box);
        if (!image)
            return std::nullopt;
        return builtPage(*image, image->size().toSizeF() * pointsPerPixel, ocr,
                         [&] { return compressed(*image, rebuildQuality); });
    });
}

/// Nothing for a document that doesn't open or has no pages.
std::optional<PdfDocument> openForRebuilding(const QUrl &location)
{
    std::optional<PdfDocument> document = PdfDocument::open(location);
    return document && document->pageCount() > 0 ? std::move(document) : std::nullopt;
}

/// How all pages of a document are rebuilt.
struct RebuildRules {
    double dpi;
    std::optional<MagicSettings> levels;
    bool ocr;
    std::optional<QUrl> rawOf; ///< The document whose raw pages serve; absent when none do.
};

void report(const Progress &progress, int done, qsizetype total)
{
    if (progress)
        progress(done, static_cast<int>(total));
}

} // namespace

std::vector<OcrLine> recognizeSync(const QImage &image)
{
    return recognizeText(image);
}

QCoro::Task<bool> assemblePdf(QList<PageFile> pages, bool ocr,
                              std::function<bool(const PdfDocument &)> write, Progress progress)
{
    PdfDocument document;
    report(progress, 0, pages.size());
    for (const PageFile &file : pages) {
        QFuture<std::optional<PdfPage>> work =
            QtConcurrent::run([file, ocr] { return pageFromFile(file.path, file.dpi, ocr); });
        const std::optional<PdfPage> page = co_await work;
        if (!page || !document.insertPage(*page, document.pageCount()))
            co_return false;
        report(progress, document.pageCount(), pages.size());
    }
    document.stampOrigin();
    co_return write(document);
}

QCoro::Task<bool> assemblePdf(QStringList imagePaths, double dpi, bool ocr,
                              std::function<bool(const PdfDocument &)> write, Progress progress)
{
    QList<PageFile> pages;
    for (const QString &path : imagePaths)
        pages.append({path, dpi});
    co_return co_await assemblePdf(pages, ocr, write, progress);
}

QCoro::Task<std::optional<PdfPage>> rebuildPage(PdfPage page, double dpi,
                                                std::optional<MagicSettings> levels, bool ocr,
                                                std::optional<QUrl> raw)
{
    QFuture<std::optional<PdfPage>> work = QtConcurrent::run(
        [page, dpi, levels, ocr, raw] { return rebuiltPage(page, dpi, levels, ocr, raw); });
    co_return co_await work;
}

QCoro::Task<QList<PdfPage>> cropPage(PdfPage page, QList<Quad> boxes, double dpi, bool ocr,
                                     std::optional<QUrl> raw, Progress progress, IsWanted isWanted)
{
    QList<PdfPage> pages;
    report(progress, 0, boxes.size());
    QFuture<std::optional<QImage>> reading =
        inBackground([page, dpi, raw] { return sourceImage(page, dpi, raw); });
    const std::optional<QImage> source = co_await reading;
    if (!source)
        co_return pages;
    // The width alone decides: pages have one scale.
    const double pointsPerPixel = page.displayedSize().width() / source->width();
    int done = 0;
    for (const Quad &box : std::as_const(boxes)) {
        if (isWanted && !isWanted())
            break;
        QFuture<std::optional<PdfPage>> work =
            QtConcurrent::run([image = *source, box, pointsPerPixel, ocr] {
                return croppedPage(image, box, pointsPerPixel, ocr);
            });
        if (const std::optional<PdfPage> cropped = co_await work)
            pages.append(*cropped);
        report(progress, ++done, boxes.size());
    }
    co_return pages;
}

namespace {

/// Rebuilds the pages in place, one after the other. False at the first that can't be. The document
/// is the caller's and outlives the task.
QCoro::Task<bool> rebuildAll(PdfDocument *document, RebuildRules rules, Progress progress)
{
    const int count = document->pageCount();
    report(progress, 0, count);
    for (int index = 0; index < count; ++index) {
        const std::optional<PdfPage> old = document->page(index);
        if (!old)
            co_return false;
        const std::optional<QUrl> raw =
            rules.rawOf ? rawIfValid(*document, index, *rules.rawOf) : std::nullopt;
        const std::optional<PdfPage> page =
            co_await rebuildPage(*old, rules.dpi, rules.levels, rules.ocr, raw);
        if (!page || !document->replacePage(index, *page))
            co_return false;
        report(progress, index + 1, count);
    }
    co_return true;
}

} // namespace

QCoro::Task<bool> ocrDocument(QUrl location, double dpi,
                              std::function<bool(const PdfDocument &, const QUrl &)> write,
                              Progress progress)
{
    std::optional<PdfDocument> document = openForRebuilding(location);
    if (!document)
        co_return false;
    const RebuildRules rules{.dpi = dpi, .levels = {}, .ocr = true, .rawOf = {}};
    const bool rebuilt = co_await rebuildAll(&*document, rules, progress);
    co_return rebuilt &&write(*document, location);
}

QCoro::Task<bool> applyMagic(MagicSettings settings, QList<QUrl> locations, double dpi, bool ocr,
                             std::function<bool(const PdfDocument &, const QUrl &)> write,
                             Progress progress)
{
    bool all = true;
    for (const QUrl &location : locations) {
        std::optional<PdfDocument> document = openForRebuilding(location);
        if (!document) {
            all = false;
            continue;
        }
        const RebuildRules rules{.dpi = dpi, .levels = settings, .ocr = ocr, .rawOf = location};
        const bool rebuilt = co_await rebuildAll(&*document, rules, progress);
        all = rebuilt && write(*document, location) && all;
    }
    co_return all;
}

} // namespace velmor::VisionOCR
