#include "pipeline/PageText.h"

#include "pipeline/PageTurn.h"
#include "pipeline/Renderer.h"

#include <algorithm>

namespace velmor {

namespace {

/// How much farther away than to the side a box counts that lies above or below: the line that the
/// point is on goes before those around it, but not before another column's.
constexpr double lineFaithfulness = 30;

/// A page as it is read: by itself, turned to some rotation.
struct Reading {
    QByteArray pdf;
    QTransform placing; ///< From the places in the file's page space to ours on the page as shown.
};

std::optional<Reading> readingAt(const PdfPage &page, int rotation)
{
    const auto upright = page.uprightBytes(rotation);
    if (!upright)
        return std::nullopt;
    const QSizeF size = page.cropBox().size();
    const auto toSheet = QTransform::fromTranslate(-upright->topLeft.x(), upright->topLeft.y());
    return Reading{upright->pdf,
                   toSheet * pageTurn(page.rotation() - rotation,
                                      rotation % 180 == 0 ? size : size.transposed())};
}

/// Some of the page's text, read at `rotation`.
std::optional<TextRuns> runs(const PdfPage &page, int rotation, TextRange range)
{
    const auto reading = readingAt(page, rotation);
    if (!reading)
        return std::nullopt;
    const auto read = Renderer::shared().text({reading->pdf, range.start, range.length});
    if (!read)
        return std::nullopt;
    TextRuns runs{read->text, {}};
    for (const QRectF &box : read->boxes)
        runs.boxes.append(reading->placing.mapRect(box));
    return runs;
}

std::optional<PageText> readAt(const PdfPage &page, int rotation)
{
    const auto all = runs(page, rotation, {0, -1});
    if (!all)
        return std::nullopt;
    return PageText{*all, rotation};
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
    const auto reading = readingAt(page, whole.rotation);
    if (!reading)
        return std::nullopt;
    const QTransform toFile = reading->placing.inverted();
    QList<QRectF> boxes;
    for (const QRectF &box : whole.boxes)
        boxes.append(toFile.mapRect(box));
    const QPointF place = toFile.map(point);
    const QRectF box = nearestBox(boxes, place);
    // In the middle of the line's height, where no neighbour reaches.
    const QPointF hit(nearestIn(box, place).x(), box.center().y());
    const QPointF start(boxes.first().left(), boxes.first().center().y());
    const auto found = Renderer::shared().textPosition({reading->pdf, start, hit});
    if (!found)
        return std::nullopt;
    return found->position;
}

std::optional<TextRuns> partOfText(const PdfPage &page, const PageText &whole, TextRange range)
{
    return runs(page, whole.rotation, range);
}

} // namespace velmor
