#include "editor/EditedFile.h"

#include "pipeline/PageOutline.h"
#include "pipeline/PageRaster.h"
#include "pipeline/PageSource.h"
#include "pipeline/RawStore.h"
#include "pipeline/WithoutExceptions.h"

#include <QThreadPool>
#include <QtConcurrent>

namespace velmor {

namespace {

using WeakWish = std::weak_ptr<const int>;

/// The thread that takes pages out of opened documents, which serve one thread at a time.
QThreadPool &documentThread()
{
    struct Pool : QThreadPool {
        Pool() { setMaxThreadCount(1); }
    };
    static Pool pool;
    return pool;
}

std::shared_ptr<EditedFile> opened(const QUrl &url)
{
    // Noted before the file is read, so that a change in between shows.
    const FileStamp stamp = stampOf(url);
    std::optional<PdfDocument> document = PdfDocument::open(url);
    if (!document)
        return nullptr;
    const int pageCount = document->pageCount();
    return std::make_shared<EditedFile>(EditedFile{stamp, std::move(*document), pageCount});
}

/// Where the pixels of a page come from.
struct PagePixels {
    std::optional<PdfPage> page;
    std::optional<QUrl> raw;
};

PagePixels sourceOf(const EditedFile &file, int index, const QUrl &url)
{
    const std::optional<PdfPage> page = file.document.page(index);
    const std::optional<QByteArray> bytes = page ? page->renderingBytes() : std::nullopt;
    const std::optional<PdfDocument> alone = bytes ? PdfDocument::fromBytes(*bytes) : std::nullopt;
    return {alone ? alone->page(0) : std::nullopt, rawIfValid(file.document, index, url)};
}

EditedPage loaded(const PagePixels &source, double maxDim)
{
    EditedPage result{.page = source.page};
    if (!source.page)
        return result;
    std::optional<QImage> image = source.raw ? RawStore::image(*source.raw) : std::nullopt;
    image = image ? PageRaster::downscale(*image, maxDim)
                  : PageRaster::render(*source.page, PageRaster::MaxDim{maxDim});
    if (!image)
        return result;
    result.image = *image;
    result.sample = rgbaBuffer(*image);
    if (result.sample)
        result.histogram = histogram64(*result.sample);
    return result;
}

} // namespace

QFuture<std::shared_ptr<EditedFile>> openForEditing(const QUrl &url, const Wish &wish)
{
    return inBackground(
        [url, wish = WeakWish(wish)] { return wish.expired() ? nullptr : opened(url); });
}

QFuture<EditedPage> loadForEditing(const std::shared_ptr<EditedFile> &file, int index,
                                   const QUrl &url, double maxDim, const Wish &wish)
{
    const WeakWish weak = wish;
    QFuture<PagePixels> source = QtConcurrent::run(&documentThread(), [file, index, url, weak] {
        return weak.expired() ? PagePixels()
                              : withoutExceptions([&] { return sourceOf(*file, index, url); });
    });
    return source.then(QtFuture::Launch::Async, [maxDim, weak](const PagePixels &found) {
        return weak.expired() ? EditedPage()
                              : withoutExceptions([&] { return loaded(found, maxDim); });
    });
}

QFuture<std::optional<Quad>> outlineForEditing(const QImage &image, const Wish &wish)
{
    return inBackground([image, wish = WeakWish(wish)] {
        return wish.expired() ? std::nullopt : findPageOutline(image);
    });
}

} // namespace velmor
