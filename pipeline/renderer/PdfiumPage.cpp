#include "pipeline/renderer/PdfiumPage.h"

#include <QPainter>
#include <QPdfSelection>

namespace velmor {

PdfiumPage::PdfiumPage(const QByteArray &pdf)
{
    m_file.setData(pdf);
    m_file.open(QIODevice::ReadOnly);
    m_document.load(&m_file);
}

bool PdfiumPage::isOpen() const
{
    return m_document.status() == QPdfDocument::Status::Ready && m_document.pageCount() > 0;
}

/// The library takes the page's height for the upper edge of its box, wherever that is, and counts
/// y downwards from there; x it leaves as it stands in page space.
double PdfiumPage::pageTop() const
{
    return m_document.pagePointSize(0).height();
}

QImage PdfiumPage::picture(QSize size)
{
    const QImage drawn = m_document.render(0, size);
    QImage white(size, QImage::Format_RGB32);
    if (drawn.isNull() || white.isNull())
        return {};
    white.fill(Qt::white);
    QPainter(&white).drawImage(0, 0, drawn);
    return white;
}

PageTextAnswer PdfiumPage::text(const PageTextRequest &request)
{
    const QPdfSelection selection =
        request.length < 0 ? m_document.getAllText(0)
                           : m_document.getSelectionAtIndex(0, request.start, request.length);
    PageTextAnswer answer{selection.text(), {}};
    for (const QPolygonF &box : selection.bounds())
        answer.boxes.append(box.boundingRect().translated(0, -pageTop()));
    return answer;
}

TextPositionAnswer PdfiumPage::textPosition(const TextPositionRequest &request)
{
    const QPointF down(0, pageTop());
    const QPdfSelection selection =
        m_document.getSelection(0, request.start + down, request.place + down);
    // What the library tells of a place is the end of the selection from the first character.
    return {selection.isValid() ? selection.endIndex() : 0};
}

} // namespace velmor
