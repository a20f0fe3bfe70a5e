#include "preview/PreviewDocument.h"

#include "pipeline/PageRaster.h"
#include "pipeline/Renderer.h"
#include "preview/Background.h"

#include <QCoreApplication>

#include <algorithm>

namespace velmor {

namespace {

enum Priority { pictures, questions };

/// Beyond what PDF allows; it keeps the arithmetic on the column within bounds.
constexpr double longestSheetSide = 1e6;
/// As many texts of pages are kept.
constexpr qsizetype mostTexts = 5'000;

/// The thread that works on opened documents, which serve one thread at a time.
QThreadPool &documentThread();

QThreadPool &documentThread()
{
    struct Pool : QThreadPool {
        Pool()
        {
            setMaxThreadCount(1);
            setExpiryTimeout(-1);
            // Its tasks use what goes with the program; no page holds up the end.
            qAddPostRoutine([] {
                Renderer::shared().close();
                documentThread().clear();
                documentThread().waitForDone();
            });
        }
    };
    static Pool pool;
    return pool;
}

PageSheet sheetOf(const PdfPage &page)
{
    QRectF box = page.cropBox();
    box.setWidth(std::min(box.width(), longestSheetSide));
    box.setHeight(std::min(box.height(), longestSheetSide));
    return {box, page.rotation()};
}

QString pasteable(const QString &text)
{
    QStringList lines = QString(text).remove(u'\r').split(u'\n');
    for (QString &line : lines) {
        while (line.endsWith(u' '))
            line.chop(1);
    }
    return lines.join(u'\n');
}

} // namespace

QFuture<std::shared_ptr<PreviewDocument>>
PreviewDocument::open(const QUrl &url, const std::weak_ptr<const void> &wish)
{
    return runIn(*QThreadPool::globalInstance(), questions,
                 [url, wish]() -> std::shared_ptr<PreviewDocument> {
                     auto document = wish.expired() ? std::nullopt : PdfDocument::open(url);
                     if (!document)
                         return nullptr;
                     return std::make_shared<PreviewDocument>(std::move(*document), url);
                 });
}

PreviewDocument::PreviewDocument(PdfDocument document, QUrl url)
    : m_url(std::move(url)), m_document(std::move(document))
{
    const int count = m_document.pageCount();
    m_pages.reserve(count);
    for (int index = 0; index < count; ++index)
        m_pages.append(sheetOf(m_document.page(index).value()));
}

template <typename Work> auto PreviewDocument::ask(int priority, Work work)
{
    return runIn(documentThread(), priority, [self = weak_from_this(), work = std::move(work)] {
        using Answer = std::invoke_result_t<Work, PreviewDocument &>;
        const std::shared_ptr<PreviewDocument> document = self.lock();
        return document ? Answer(work(*document)) : Answer();
    });
}

QFuture<QImage> PreviewDocument::picture(const PictureRequest &request)
{
    return ask(pictures, [request](PreviewDocument &self) {
        const PageSheet &sheet = self.m_pages[request.page];
        const QRectF part = sheet.toPageSpace().mapRect(request.area(sheet.size()));
        const auto page = self.m_document.page(request.page);
        const auto image =
            page ? PageRaster::render(*page, part, request.pixels.size()) : std::nullopt;
        return image.value_or(QImage());
    });
}

const PageText &PreviewDocument::knownText(int page)
{
    const auto known = m_texts.constFind(page);
    if (known != m_texts.constEnd())
        return *known;
    if (m_texts.size() >= mostTexts)
        m_texts.clear();
    const auto text = pageText(m_document.page(page).value());
    return *m_texts.insert(page, text.value_or(PageText()));
}

QFuture<PageText> PreviewDocument::text(int page)
{
    return ask(questions, [page](PreviewDocument &self) { return self.knownText(page); });
}

QFuture<TextPosition> PreviewDocument::positionAt(const PagePlace &place)
{
    return ask(questions, [place](PreviewDocument &self) {
        const PdfPage page = self.m_document.page(place.page).value();
        const auto index = textPositionAt(page, self.knownText(place.page), place.point);
        return TextPosition{place.page, index.value_or(0)};
    });
}

QList<QRectF> PreviewDocument::boxesOf(int page, TextRange range)
{
    const PageText &whole = knownText(page);
    if (range.length < 0)
        range.length = std::max(0, static_cast<int>(whole.text.size()) - range.start);
    if (range.start == 0 && range.length == whole.text.size())
        return whole.boxes;
    const auto part = partOfText(m_document.page(page).value(), whole, range);
    return part ? part->boxes : QList<QRectF>();
}

QFuture<QList<QList<QRectF>>> PreviewDocument::boxes(int page, const QList<TextRange> &ranges)
{
    return ask(questions, [page, ranges](PreviewDocument &self) {
        QList<QList<QRectF>> boxes;
        for (const TextRange &range : ranges)
            boxes.append(self.boxesOf(page, range));
        return boxes;
    });
}

QFuture<QString> PreviewDocument::textBetween(const TextPosition &from, const TextPosition &to)
{
    return ask(questions, [from, to](PreviewDocument &self) {
        QStringList texts;
        for (int page = from.page; page <= to.page; ++page) {
            const QString text = self.knownText(page).text;
            const int start = page == from.page ? from.index : 0;
            const qsizetype end = page == to.page ? to.index : text.size();
            texts.append(pasteable(text.mid(start, end - start)));
        }
        return texts.join(u'\n');
    });
}

} // namespace velmor
