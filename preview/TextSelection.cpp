#include "preview/TextSelection.h"

#include "preview/Background.h"

#include <QTextBoundaryFinder>

#include <limits>

namespace velmor {

void TextSelection::setDocument(const std::shared_ptr<PreviewDocument> &document)
{
    forget();
    m_document = document;
    Q_EMIT changed();
}

void TextSelection::forget()
{
    delete m_answers;
    m_answers = new QObject(this);
    m_start.reset();
    m_end.reset();
    m_extent.reset();
    m_extending = false;
    m_boxes.clear();
}

void TextSelection::clear()
{
    const bool wasEmpty = isEmpty();
    forget();
    if (!wasEmpty)
        Q_EMIT changed();
}

void TextSelection::start(const PagePlace &place)
{
    clear();
    if (!m_document)
        return;
    whenAnswered(m_answers, m_document->positionAt(place), [this](const TextPosition &position) {
        m_start = position;
        extendNext();
    });
}

void TextSelection::extend(const PagePlace &place)
{
    m_extent = place;
    extendNext();
}

void TextSelection::extendNext()
{
    if (m_extending || !m_extent || !m_start || !m_document)
        return;
    m_extending = true;
    const PagePlace place = *m_extent;
    m_extent.reset();
    whenAnswered(m_answers, m_document->positionAt(place), [this](const TextPosition &position) {
        m_extending = false;
        select(*m_start, position);
        extendNext();
    });
}

void TextSelection::select(const TextPosition &start, const TextPosition &end)
{
    m_start = start;
    m_end = end;
    Q_EMIT changed();
}

void TextSelection::selectWord(const PagePlace &place)
{
    clear();
    if (!m_document)
        return;
    whenAnswered(m_answers, m_document->positionAt(place), [this](const TextPosition &position) {
        whenAnswered(m_answers, m_document->text(position.page),
                     [this, position](const PageText &page) { selectWordAt(position, page.text); });
    });
}

void TextSelection::selectWordAt(const TextPosition &position, const QString &text)
{
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
    words.setPosition(position.index);
    const bool betweenWords = words.isAtBoundary();
    const bool endsWord = words.boundaryReasons().testFlag(QTextBoundaryFinder::EndOfItem);
    const bool startsWord = words.boundaryReasons().testFlag(QTextBoundaryFinder::StartOfItem);
    const qsizetype start =
        betweenWords && (startsWord || !endsWord) ? position.index : words.toPreviousBoundary();
    words.setPosition(start);
    const qsizetype end = words.toNextBoundary();
    if (start >= 0 && end > start)
        select({position.page, static_cast<int>(start)}, {position.page, static_cast<int>(end)});
}

void TextSelection::selectAll()
{
    clear();
    if (!m_document || m_document->pages().isEmpty())
        return;
    select({0, 0},
           {static_cast<int>(m_document->pages().size()) - 1, std::numeric_limits<int>::max()});
}

std::optional<TextRange> TextSelection::rangeOn(int page) const
{
    if (isEmpty())
        return std::nullopt;
    const auto [first, last] = std::minmax(*m_start, *m_end);
    if (page < first.page || page > last.page)
        return std::nullopt;
    const int start = page == first.page ? first.index : 0;
    const bool toItsEnd = page != last.page || last.index == std::numeric_limits<int>::max();
    const TextRange range{start, toItsEnd ? -1 : last.index - start};
    return range.length == 0 ? std::nullopt : std::optional(range);
}

QList<QRectF> TextSelection::boxes(int page)
{
    const std::optional<TextRange> range = rangeOn(page);
    if (!range)
        return {};
    PageBoxes &known = m_boxes[page];
    if (known.asked == *range)
        return known.boxes;
    // What was selected before stays in sight until the answer is there.
    known.asked = *range;
    whenAnswered(m_answers, m_document->boxes(page, {*range}),
                 [this, page, range](const QList<QList<QRectF>> &boxes) {
                     PageBoxes &now = m_boxes[page];
                     if (now.asked != *range)
                         return;
                     now.boxes = boxes.value(0);
                     Q_EMIT changed();
                 });
    return known.boxes;
}

void TextSelection::copy()
{
    if (isEmpty())
        return;
    const auto [first, last] = std::minmax(*m_start, *m_end);
    // Also if something else is selected meanwhile.
    whenAnswered(this, m_document->textBetween(first, last), [this](const QString &text) {
        if (!text.isEmpty())
            Q_EMIT copied(text);
    });
}

} // namespace velmor
