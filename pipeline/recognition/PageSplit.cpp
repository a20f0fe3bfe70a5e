#include "pipeline/recognition/PageSplit.h"

#include <algorithm>
#include <cmath>
#include <numeric>

// A page is cut like a guillotine does: across at gaps between blocks; then neighbouring bands that
// share an upright gap, and look like columns of running text on both sides, are put together again
// and cut along it; and so on inside the columns. In this order the pieces are in reading order.

namespace velmor {

namespace {

/// Lengths in inches.
constexpr double blockGap = 0.10;     ///< Between paragraphs; lines are nearer to each other.
constexpr double columnGap = 0.12;    ///< Between columns.
constexpr double narrowColumn = 1.2;  ///< Running text isn't narrower.
constexpr double tallestLine = 0.5;   ///< Anything taller is a picture or several lines.
constexpr double leastLineGap = 0.02; ///< Two cells or so: room enough to cut between lines.

/// Of a column's lines, on average this much of its width is covered if it is running text.
constexpr double runningText = 0.6;
constexpr int fewestColumnLines = 4;

/// Each half has at least this share of the page's reading time.
constexpr double fairShare = 0.3;
/// A page with less than this, in line heights of width, is read as quickly in one piece.
constexpr double tooLittleText = 60;

/// From `begin` to before `end`.
struct Span {
    int begin = 0;
    int end = 0;

    [[nodiscard]] int length() const { return end - begin; }
    [[nodiscard]] int middle() const { return begin + length() / 2; }
};
using Spans = std::vector<Span>;

enum class Axis { rows, columns };

/// The ink of each row, or each column, of `area`.
std::vector<int> profile(const InkMap &ink, const QRect &area, Axis axis)
{
    const bool rows = axis == Axis::rows;
    std::vector<int> counts(static_cast<size_t>(rows ? area.height() : area.width()));
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (ink.at(x, y))
                ++counts[static_cast<size_t>(rows ? y - area.top() : x - area.left())];
        }
    }
    return counts;
}

/// The runs of entries that are empty but for a speck, or that aren't, offset by `origin`.
Spans runs(const std::vector<int> &counts, int origin, bool inked)
{
    Spans found;
    Span run{origin, origin};
    for (int count : counts) {
        if ((count > 1) == inked) {
            ++run.end;
            continue;
        }
        if (run.length() > 0)
            found.push_back(run);
        run = {run.end + 1, run.end + 1};
    }
    if (run.length() > 0)
        found.push_back(run);
    return found;
}

class Cutter {
public:
    explicit Cutter(const InkMap &ink) : m_ink(ink) {}

    /// Appends the blocks of `area` in reading order.
    void cut(const QRect &area)
    {
        const std::vector<QRect> bands = bandsOf(area, cells(blockGap));
        for (size_t first = 0; first < bands.size();) {
            Spans gutters = whiteColumns(bands[first]);
            size_t end = first + 1;
            for (; end < bands.size(); ++end) {
                Spans shared = common(gutters, whiteColumns(bands[end]));
                if (inner(shared, area).empty())
                    break;
                gutters = std::move(shared);
            }
            cutGroup({bands.begin() + static_cast<std::ptrdiff_t>(first),
                      bands.begin() + static_cast<std::ptrdiff_t>(end)},
                     inner(gutters, area));
            first = end;
        }
    }

    /// `area` cut across at the middle of each gap of at least `gap` cells.
    [[nodiscard]] std::vector<QRect> bandsOf(const QRect &area, int gap) const
    {
        std::vector<QRect> bands;
        int top = area.top();
        for (const Span &space : runs(profile(m_ink, area, Axis::rows), area.top(), false)) {
            const bool inside = space.begin > area.top() && space.end <= area.bottom();
            if (!inside || space.length() < gap)
                continue;
            bands.emplace_back(area.left(), top, area.width(), space.middle() - top);
            top = space.middle();
        }
        bands.emplace_back(area.left(), top, area.width(), area.bottom() + 1 - top);
        return bands;
    }

    [[nodiscard]] int cells(double inches) const
    {
        return std::max(1, static_cast<int>(std::lround(inches * m_ink.dpi)));
    }

    /// The time `area` takes to read, in line heights of line width: lines are brought to one
    /// height before they are read. Tall things are rarely text.
    [[nodiscard]] double readingTime(const QRect &area) const
    {
        double time = 0;
        for (const Span &line : lines(area)) {
            if (line.length() > cells(tallestLine))
                continue;
            const double height = std::max(line.length(), cells(0.08));
            time += extent(area, line).length() / height;
        }
        return time;
    }

    [[nodiscard]] bool hasColumns(const QRect &area) const
    {
        return !inner(whiteColumns(area), area).empty();
    }

    std::vector<QRect> blocks;

private:
    [[nodiscard]] Spans lines(const QRect &area) const
    {
        return runs(profile(m_ink, area, Axis::rows), area.top(), true);
    }

    /// From the first to the last ink of the rows `line` of `area`.
    [[nodiscard]] Span extent(const QRect &area, const Span &line) const
    {
        const QRect strip(area.left(), line.begin, area.width(), line.length());
        const std::vector<int> counts = profile(m_ink, strip, Axis::columns);
        const auto isInk = [](int count) {
            return count > 0;
        };
        const auto first = std::ranges::find_if(counts, isInk);
        const auto last = std::find_if(counts.rbegin(), counts.rend(), isInk);
        if (first == counts.end())
            return {};
        return {static_cast<int>(first - counts.begin()), static_cast<int>(counts.rend() - last)};
    }

    /// How much of the rows `line` of `area` their words cover, with the spaces between words but
    /// not with gaps as between the cells of a table.
    [[nodiscard]] int covering(const QRect &area, const Span &line) const
    {
        const Span used = extent(area, line);
        const QRect strip(area.left() + used.begin, line.begin, used.length(), line.length());
        int covered = used.length();
        for (const Span &gap : whiteColumns(strip))
            covered -= gap.length();
        return covered;
    }

    /// Upright white strips from top to bottom of `area`, wide enough to part columns.
    [[nodiscard]] Spans whiteColumns(const QRect &area) const
    {
        Spans white = runs(profile(m_ink, area, Axis::columns), area.left(), false);
        std::erase_if(white, [&](const Span &s) { return s.length() < cells(columnGap); });
        return white;
    }

    [[nodiscard]] Spans common(const Spans &left, const Spans &right) const
    {
        Spans shared;
        for (const Span &a : left) {
            for (const Span &b : right) {
                const Span both{std::max(a.begin, b.begin), std::min(a.end, b.end)};
                if (both.length() >= cells(columnGap))
                    shared.push_back(both);
            }
        }
        return shared;
    }

    /// Those of `gutters` with something on both sides: not the margins.
    [[nodiscard]] static Spans inner(Spans gutters, const QRect &area)
    {
        std::erase_if(gutters, [&](const Span &gutter) {
            return gutter.begin <= area.left() || gutter.end > area.right();
        });
        return gutters;
    }

    [[nodiscard]] bool isRunningText(const QRect &column) const
    {
        const Span used = extent(column, {column.top(), column.bottom() + 1});
        const Spans found = lines(column);
        if (used.length() < cells(narrowColumn) || std::ssize(found) < fewestColumnLines)
            return false;
        double covered = 0;
        for (const Span &line : found)
            covered += covering(column, line);
        return covered >= runningText * used.length() * static_cast<double>(found.size());
    }

    void cutGroup(const std::vector<QRect> &bands, const Spans &gutters)
    {
        const QRect all = bands.front() | bands.back();
        std::vector<QRect> columns;
        int left = all.left();
        for (const Span &gutter : gutters) {
            columns.emplace_back(left, all.top(), gutter.middle() - left, all.height());
            left = gutter.middle();
        }
        columns.emplace_back(left, all.top(), all.right() + 1 - left, all.height());
        const bool parted = columns.size() > 1 && std::ranges::all_of(columns, [&](const QRect &c) {
                                return isRunningText(c);
                            });
        if (!parted) {
            blocks.insert(blocks.end(), bands.begin(), bands.end());
            return;
        }
        for (const QRect &column : columns)
            cut(column);
    }

    const InkMap &m_ink;
};

/// `blocks` with the one at the middle of the reading time cut between two of its lines, if it is a
/// single column of text.
std::vector<QRect> withMiddleCut(const Cutter &cutter, std::vector<QRect> blocks, double total)
{
    double before = 0;
    for (auto block = blocks.begin(); block != blocks.end(); ++block) {
        const double time = cutter.readingTime(*block);
        if (before + time < total / 2) {
            before += time;
            continue;
        }
        if (cutter.hasColumns(*block))
            return blocks;
        const std::vector<QRect> lines = cutter.bandsOf(*block, cutter.cells(leastLineGap));
        block = blocks.erase(block);
        blocks.insert(block, lines.begin(), lines.end());
        return blocks;
    }
    return blocks;
}

double timeOf(const Cutter &cutter, const std::vector<QRect> &blocks)
{
    return std::accumulate(blocks.begin(), blocks.end(), 0.0, [&](double sum, const QRect &block) {
        return sum + cutter.readingTime(block);
    });
}

std::optional<PageHalves> halves(const Cutter &cutter, const std::vector<QRect> &blocks,
                                 double total)
{
    double before = 0;
    double bestShare = 0;
    auto bestCut = blocks.begin();
    for (auto block = blocks.begin(); block != blocks.end(); ++block) {
        const double share = std::min(before, total - before) / total;
        if (share > bestShare) {
            bestShare = share;
            bestCut = block;
        }
        before += cutter.readingTime(*block);
    }
    if (bestShare < fairShare)
        return std::nullopt;
    return PageHalves{
        {blocks.begin(), bestCut     },
        {bestCut,        blocks.end()}
    };
}

} // namespace

std::vector<QRect> textBlocks(const InkMap &ink)
{
    if (ink.width == 0 || ink.height == 0)
        return {};
    Cutter cutter(ink);
    cutter.cut({0, 0, ink.width, ink.height});
    return cutter.blocks;
}

std::optional<PageHalves> splitPage(const InkMap &ink)
{
    const std::vector<QRect> blocks = textBlocks(ink);
    const Cutter cutter(ink);
    const double total = timeOf(cutter, blocks);
    if (total < tooLittleText)
        return std::nullopt;
    if (auto found = halves(cutter, blocks, total))
        return found;
    return halves(cutter, withMiddleCut(cutter, blocks, total), total);
}

} // namespace velmor
