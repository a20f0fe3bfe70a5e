#include "pipeline/PageRenderer.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfDocument>
#include <QThreadPool>

#include <exception>
#include <future>

namespace velmor {

namespace {

/// The thread that PDFium lives on. PDFium keeps state for the whole process.
QThreadPool &rendererThread()
{
    struct Pool : QThreadPool {
        Pool()
        {
            setMaxThreadCount(1);
            setExpiryTimeout(-1);
        }
    };
    static Pool pool;
    return pool;
}

std::optional<QImage> draw(const QByteArray &pdf, QSize size)
{
    // From memory: the renderer never ends on a file that shrinks while it is read.
    QBuffer buffer;
    buffer.setData(pdf);
    buffer.open(QIODevice::ReadOnly);
    QPdfDocument document;
    document.load(&buffer);
    if (document.status() != QPdfDocument::Status::Ready || document.pageCount() < 1)
        return std::nullopt;
    const QImage drawn = document.render(0, size);
    if (drawn.isNull())
        return std::nullopt;

    QImage paper(size, QImage::Format_RGB32);
    if (paper.isNull())
        return std::nullopt;
    paper.fill(Qt::white);
    QPainter(&paper).drawImage(0, 0, drawn);
    return paper;
}

} // namespace

std::optional<QImage> renderFirstPage(const QByteArray &pdf, QSize size)
{
    // Not a QFuture: whoever waits for one runs its task himself, if it hasn't begun.
    std::promise<std::optional<QImage>> promise;
    std::future<std::optional<QImage>> image = promise.get_future();
    rendererThread().start([&] {
        try {
            promise.set_value(draw(pdf, size));
        } catch (const std::exception &) { // want of memory
            promise.set_value(std::nullopt);
        }
    });
    return image.get();
}

} // namespace velmor
