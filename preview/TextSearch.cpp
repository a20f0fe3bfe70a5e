#include "preview/TextSearch.h"

#include "preview/Background.h"
#include "preview/TextMatches.h"

#include <iterator>

namespace velmor {

void TextSearch::setDocument(const std::shared_ptr<PreviewDocument> &document)
{
    m_document = document;
    m_shownPage = 0;
    restart();
}

void TextSearch::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    restart();
}

void TextSearch::restart()
{
    delete m_answers;
    m_answers = new QObject(this);
    m_matches.clear();
    m_count = 0;
    m_current.reset();
    m_toldCurrent = true;
    m_page = m_shownPage;
    const bool searches = m_document && !m_text.trimmed().isEmpty();
    m_pagesLeft = searches ? static_cast<int>(m_document->pages().size()) : 0;
    Q_EMIT changed();
    searchPage();
}

void TextSearch::searchPage()
{
    if (m_pagesLeft == 0)
        return;
    whenAnswered(m_answers, m_document->text(m_page),
                 [this](const PageText &page) { takePage(page); });
}

void TextSearch::takePage(const PageText &page)
{
    const QList<TextRange> ranges = textMatches(page.text, m_text);
    if (!ranges.isEmpty())
        m_matches[m_page] = {ranges, {}, false};
    if (!ranges.isEmpty() && !m_current)
        setCurrent({m_page, 0});
    m_count += static_cast<int>(ranges.size());
    --m_pagesLeft;
    m_page = (m_page + 1) % static_cast<int>(m_document->pages().size());
    Q_EMIT changed();
    searchPage();
}

int TextSearch::current() const
{
    if (!m_current)
        return 0;
    qsizetype before = 0;
    for (auto page = m_matches.begin(); page->first != m_current->page; ++page)
        before += page->second.ranges.size();
    return static_cast<int>(before) + m_current->index + 1;
}

void TextSearch::next()
{
    if (!m_current)
        return;
    auto page = m_matches.find(m_current->page);
    if (m_current->index + 1 < page->second.ranges.size()) {
        setCurrent({m_current->page, m_current->index + 1});
        return;
    }
    page = std::next(page) == m_matches.end() ? m_matches.begin() : std::next(page);
    setCurrent({page->first, 0});
}

void TextSearch::previous()
{
    if (!m_current)
        return;
    auto page = m_matches.find(m_current->page);
    if (m_current->index > 0) {
        setCurrent({m_current->page, m_current->index - 1});
        return;
    }
    page = std::prev(page == m_matches.begin() ? m_matches.end() : page);
    setCurrent({page->first, static_cast<int>(page->second.ranges.size()) - 1});
}

void TextSearch::setCurrent(const Match &match)
{
    m_current = match;
    m_toldCurrent = false;
    askForBoxes(match.page, m_matches.at(match.page));
    tellCurrent();
    Q_EMIT changed();
}

void TextSearch::tellCurrent()
{
    if (m_toldCurrent || !m_current)
        return;
    const PageMatches &matches = m_matches.at(m_current->page);
    if (matches.boxes.isEmpty())
        return;
    m_toldCurrent = true;
    QRectF all;
    for (const QRectF &box : matches.boxes.value(m_current->index))
        all |= box;
    Q_EMIT currentFound(m_current->page, all);
}

void TextSearch::askForBoxes(int page, PageMatches &matches)
{
    if (matches.asked)
        return;
    matches.asked = true;
    whenAnswered(m_answers, m_document->boxes(page, matches.ranges),
                 [this, page](const QList<QList<QRectF>> &boxes) {
                     m_matches.at(page).boxes = boxes;
                     tellCurrent();
                     Q_EMIT changed();
                 });
}

TextSearch::Boxes TextSearch::boxes(int page)
{
    const auto found = m_matches.find(page);
    if (found == m_matches.end())
        return {};
    PageMatches &matches = found->second;
    askForBoxes(page, matches);
    Boxes boxes;
    for (int index = 0; index < matches.boxes.size(); ++index) {
        const bool isCurrent = m_current && m_current->page == page && m_current->index == index;
        (isCurrent ? boxes.current : boxes.others).append(matches.boxes[index]);
    }
    return boxes;
}

} // namespace velmor
