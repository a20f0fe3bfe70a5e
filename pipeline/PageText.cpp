#include "pipeline/PageText.h"

#include "pipeline/PageTurn.h"
#include "pipeline/RendererThread.h"

#include <QPdfDocument>
#include <QPdfSelection>

#include <algorithm>
#include <functional>

namespace velmor {

namespace {

/// How much farther away than to the side a box counts that lies above or below: the line that the
/// point is on goes before those around it, but not before another column's.
constexpr double lineFaithfulness = 30;

/// From the library's places on a page read at `rotation` to ours on the page as shown. The
/// library takes the page's height for the upper edge of its box, wherever that is, and leaves x
/// as it stands.
QTransform placing(const PdfPage &page, int rotation, QPointF topLeft, const QPdfDocument &document)
{
    const QSizeF size = page.cropBox().size();
    const QTransform toSheet =
        QTransform::fromTranslate(-topLeft.x(), topLeft.y() - document.pagePointSize(0).height());
    return toSheet *
           pageTurn(page.rotation() - rotation, rotation % 180 == 0 ? size : size.transposed());
}

/// Opens the page in the renderer, read at `rotation`.
void onPage(const PdfPage &page, int rotation,
            const std::function<void(QPdfDocument &, const QTransform &)> &work)
{
    const auto upright = page.uprightBytes(rotation);
    if (!upright)
        return;
    onRendererThread(upright->pdf, RendererTurn::questions, [&](QPdfDocument &document) {
        work(document, placing(page, rotation, upright->topLeft, document));
    });
}

TextRuns placed(const QPdfSelection &selection, const QTransform &placing)
{
    TextRuns runs{selection.text(), {}};
    for (const QPolygonF &box : selection.bounds())
        runs.boxes.append(placing.mapRect(box.boundingRect()));
    return runs;
}

std::optional<PageText> readAt(const PdfPage &page, int rotation)
{
    std::optional<PageText> text;
    onPage(page, rotation, [&](QPdfDocument &document, const QTransform &placing) {
        text = PageText{placed(document.getAllText(0), placing), rotation};
    });
    return text;
}

/// Whether the lines run from side to side when the page is read at `text.rotation`.
bool hasLevelLines(const PageText &text, int shownRotation)
{
    double level = 0;
    for (const QRectF &box : text.boxes)
        level += box.width() - box.height();
    return (text.rotation - shownRotation) % 180 == 0 ? level >= 0 : level <= 0;
}

QPointF nearestIn(const QRectF &box, QPointF point)
{
    return {std::clamp(point.x(), box.left(), box.right()),
            std::clamp(point.y(), box.top(), box.bottom())};
}

/// The nearest of `boxes`, which lie in level lines; there is one.
QRectF nearestBox(const QList<QRectF> &boxes, QPointF point)
{
    return *std::ranges::min_element(boxes, {}, [point](const QRectF &box) {
        const QPointF way = nearestIn(box, point) - point;
        return std::abs(way.x()) + lineFaithfulness * std::abs(way.y());
    });
}

} // namespace

std::optional<PageText> pageText(const PdfPage &page)
{
    // Lines that stand upright are read in a wrong order.
    auto text = readAt(page, 0);
    const int rotation = page.rotation();
    if (rotation % 180 == 0 || !text || hasLevelLines(*text, rotation))
        return text;
    auto turned = readAt(page, rotation);
    return turned ? turned : text;
}

std::optional<int> textPositionAt(const PdfPage &page, const PageText &whole, QPointF point)
{
    if (whole.boxes.isEmpty())
        return std::nullopt;
    std::optional<int> position;
    onPage(page, whole.rotation, [&](QPdfDocument &document, const QTransform &placing) {
        const QTransform toLibrary = placing.inverted();
        QList<QRectF> boxes;
        for (const QRectF &box : whole.boxes)
            boxes.append(toLibrary.mapRect(box));
        const QPointF place = toLibrary.map(point);
        const QRectF box = nearestBox(boxes, place);
        // In the middle of the line's height, where no neighbour reaches.
        const QPointF hit(nearestIn(box, place).x(), box.center().y());
        const QPointF start(boxes.first().left(), boxes.first().center().y());
        // What the library tells of a place is the end of the selection from the first character.
        const QPdfSelection selection = document.getSelection(0, start, hit);
        position = selection.isValid() ? selection.endIndex() : 0;
    });
    return position;
}

std::optional<TextRuns> partOfText(const PdfPage &page, const PageText &whole, TextRange range)
{
    std::optional<TextRuns> text;
    onPage(page, whole.rotation, [&](QPdfDocument &document, const QTransform &placing) {
        text = placed(document.getSelectionAtIndex(0, range.start, range.length), placing);
    });
    return text;
}

} // namespace velmor
