#include "pipeline/recognition/InkMap.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// The average value of a cell below which it counts as ink. A cell of 1/75 inch with part of a
/// thin stroke is well below, paper is well above.
constexpr int inkLevel = 200;

int cellSum(const QImage &page, int x, int y)
{
    int sum = 0;
    for (int row = 0; row < inkCell; ++row) {
        const uchar *pixels = page.constScanLine(y * inkCell + row) + x * inkCell;
        for (int column = 0; column < inkCell; ++column)
            sum += pixels[column];
    }
    return sum;
}

int edgesIn(const InkMap &ink, const QRect &area)
{
    int edges = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left() + 1; x <= area.right(); ++x)
            edges += ink.at(x, y) != ink.at(x - 1, y) ? 1 : 0;
    }
    return edges;
}

} // namespace

InkMap inkMap(const QImage &page, int dpi)
{
    InkMap ink{.width = page.width() / inkCell,
               .height = page.height() / inkCell,
               .dpi = std::max(1, dpi / inkCell),
               .dark = {}};
    ink.dark.reserve(static_cast<size_t>(ink.width) * static_cast<size_t>(ink.height));
    for (int y = 0; y < ink.height; ++y) {
        for (int x = 0; x < ink.width; ++x)
            ink.dark.push_back(cellSum(page, x, y) < inkLevel * inkCell * inkCell ? 1 : 0);
    }
    return ink;
}

bool isBlank(const InkMap &ink)
{
    return std::ranges::count(ink.dark, 1) < 8;
}

int strokeEdges(const InkMap &ink)
{
    return edgesIn(ink, QRect(0, 0, ink.width, ink.height));
}

QRect busiestSquare(const InkMap &ink, double inches)
{
    const int wanted = std::max(1, static_cast<int>(std::lround(inches * ink.dpi)));
    const QSize size(std::min(wanted, ink.width), std::min(wanted, ink.height));
    const int step = std::max(1, wanted / 3);
    QRect best(QPoint(0, 0), size);
    int bestEdges = -1;
    for (int y = 0; y + size.height() <= ink.height; y += step) {
        for (int x = 0; x + size.width() <= ink.width; x += step) {
            const QRect square(QPoint(x, y), size);
            const int edges = edgesIn(ink, square);
            if (edges > bestEdges) {
                best = square;
                bestEdges = edges;
            }
        }
    }
    return {best.topLeft() * inkCell, best.size() * inkCell};
}

PagePart pagePart(const QImage &page, const InkMap &ink, const std::vector<QRect> &cells)
{
    QRect around;
    for (const QRect &cell : cells)
        around |= cell;
    // The last cells stand for the pixels beyond the grid too.
    const auto inPixels = [&](const QRect &cell) {
        const int right =
            cell.right() + 1 == ink.width ? page.width() : (cell.right() + 1) * inkCell;
        const int bottom =
            cell.bottom() + 1 == ink.height ? page.height() : (cell.bottom() + 1) * inkCell;
        const QPoint topLeft = cell.topLeft() * inkCell;
        return QRect(topLeft, QPoint(right - 1, bottom - 1));
    };
    const QRect area = inPixels(around);
    PagePart part{QImage(area.size(), QImage::Format_Grayscale8), area.topLeft()};
    if (part.pixels.isNull())
        return part;
    part.pixels.fill(255);
    for (const QRect &cell : cells) {
        const QRect source = inPixels(cell);
        const QPoint target = source.topLeft() - area.topLeft();
        for (int row = 0; row < source.height(); ++row) {
            const uchar *from = page.constScanLine(source.top() + row) + source.left();
            std::copy_n(from, source.width(), part.pixels.scanLine(target.y() + row) + target.x());
        }
    }
    return part;
}

} // namespace velmor
