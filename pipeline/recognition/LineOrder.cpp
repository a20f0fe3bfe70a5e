#include "pipeline/recognition/LineOrder.h"

#include "pipeline/recognition/PageSplit.h"

#include <QRectF>

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// A line of fewer words says too little about how the page lies.
constexpr size_t fewestWordsForSlope = 4;
/// A page lies no steeper than this on the glass, about 6 degrees; more is an error of measurement.
constexpr double steepestSlope = 0.1;

/// Lays a page straight whose lines fall by `slope`; good for small slopes.
struct Straightener {
    double slope = 0;
    QPointF centre; ///< Which stays where it is.

    [[nodiscard]] QPointF straight(QPointF point) const { return moved(point, slope); }
    [[nodiscard]] QPointF askew(QPointF point) const { return moved(point, -slope); }

private:
    [[nodiscard]] QPointF moved(QPointF point, double by) const
    {
        const QPointF from = point - centre;
        return {point.x() + by * from.y(), point.y() - by * from.x()};
    }
};

/// True when most lines run up or down the page: Chinese, or a page read as it lay on its side.
bool runsUpright(const TextAnswer &text)
{
    int balance = 0;
    for (const RecognizedWords &words : text.lines) {
        const QPoint run = words.back().box.center() - words.front().box.center();
        balance += std::abs(run.y()) > std::abs(run.x()) ? 1 : -1;
    }
    return balance > 0;
}

/// The pixels that the lines of a text fall for each pixel to the right. The lower edges of words
/// jump with their letters, which the middle one of all lines doesn't mind.
double slopeOf(const TextAnswer &text)
{
    std::vector<double> slopes;
    for (const RecognizedWords &words : text.lines) {
        if (words.size() < fewestWordsForSlope)
            continue;
        const QRect &first = words.front().box;
        const QRect &last = words.back().box;
        const int width = last.center().x() - first.center().x();
        if (width > 4 * first.height())
            slopes.push_back(static_cast<double>(last.bottom() - first.bottom()) / width);
    }
    if (slopes.empty())
        return 0;
    const auto middle = slopes.begin() + std::ssize(slopes) / 2;
    std::ranges::nth_element(slopes, middle);
    return std::abs(*middle) <= steepestSlope ? *middle : 0;
}

InkMap straightened(const InkMap &ink, const Straightener &straightener)
{
    InkMap result = ink;
    for (int y = 0; y < ink.height; ++y) {
        for (int x = 0; x < ink.width; ++x) {
            const QPoint from = straightener.askew(QPointF(x, y)).toPoint();
            const bool inside = QRect(0, 0, ink.width, ink.height).contains(from);
            result.dark[static_cast<size_t>(y) * static_cast<size_t>(ink.width) +
                        static_cast<size_t>(x)] = inside && ink.at(from.x(), from.y()) ? 1 : 0;
        }
    }
    return result;
}

/// Words of one line within one block.
struct Piece {
    RecognizedWords words;
    size_t block = 0;
    QRectF box; ///< Around the words' places on the straight page, in cells.
};

using Pieces = std::vector<Piece>;

/// A word's box in cells, moved to where its middle is on the straight page.
QRectF straightBox(const QRect &box, const Straightener &straightener)
{
    QRectF cells(QPointF(box.topLeft()) / inkCell, QSizeF(box.size()) / inkCell);
    cells.moveCenter(straightener.straight(cells.center()));
    return cells;
}

size_t blockAt(const std::vector<QRect> &blocks, QPointF place)
{
    const auto found = std::ranges::find_if(
        blocks, [&](const QRect &block) { return QRectF(block).contains(place); });
    return static_cast<size_t>(found - blocks.begin());
}

Pieces piecesOf(const TextAnswer &text, const std::vector<QRect> &blocks,
                const Straightener &straightener)
{
    Pieces pieces;
    for (const RecognizedWords &words : text.lines) {
        const size_t before = pieces.size();
        for (const RecognizedWord &word : words) {
            const QRectF box = straightBox(word.box, straightener);
            const size_t block = blockAt(blocks, box.center());
            if (pieces.size() == before || pieces.back().block != block)
                pieces.push_back({{}, block, {}});
            pieces.back().words.push_back(word);
            pieces.back().box |= box;
        }
    }
    return pieces;
}

/// True when `piece` stands beside all of `row`, rather than below.
bool isInRow(const Pieces &row, const Piece &piece)
{
    const QRectF &first = row.front().box;
    const double middle = piece.box.center().y();
    return middle > first.top() && middle < first.bottom() &&
           std::ranges::none_of(
               row,
               [&](const Piece &other) {
                   return other.box.left() < piece.box.right() &&
                          piece.box.left() < other.box.right();
               });
}

bool runsRightToLeft(const Pieces &row)
{
    int balance = 0;
    for (const Piece &piece : row) {
        for (const RecognizedWord &word : piece.words) {
            for (const QChar c : word.text) {
                if (c.direction() == QChar::DirR || c.direction() == QChar::DirAL)
                    ++balance;
                else if (c.direction() == QChar::DirL)
                    --balance;
            }
        }
    }
    return balance > 0;
}

/// The pieces of one block row by row.
std::vector<Pieces> rowsOf(Pieces pieces)
{
    std::ranges::stable_sort(pieces, {}, [](const Piece &piece) { return piece.box.center().y(); });
    std::vector<Pieces> rows;
    for (Piece &piece : pieces) {
        if (rows.empty() || !isInRow(rows.back(), piece))
            rows.emplace_back();
        rows.back().push_back(std::move(piece));
    }
    for (Pieces &row : rows) {
        std::ranges::sort(row, {}, [](const Piece &piece) { return piece.box.left(); });
        if (runsRightToLeft(row))
            std::ranges::reverse(row);
    }
    return rows;
}

} // namespace

TextAnswer inReadingOrder(const TextAnswer &text, const InkMap &ink)
{
    if (runsUpright(text))
        return text;
    const Straightener straightener{slopeOf(text), QPointF(ink.width, ink.height) / 2};
    const std::vector<QRect> blocks = textBlocks(straightened(ink, straightener));
    std::vector<Pieces> byBlock(blocks.size() + 1); // the last for what is beyond the grid
    for (Piece &piece : piecesOf(text, blocks, straightener))
        byBlock[piece.block].push_back(std::move(piece));
    TextAnswer ordered;
    for (Pieces &block : byBlock) {
        for (Pieces &row : rowsOf(std::move(block))) {
            for (Piece &piece : row)
                ordered.lines.push_back(std::move(piece.words));
        }
    }
    return ordered;
}

} // namespace velmor
