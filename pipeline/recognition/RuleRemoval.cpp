#include "pipeline/recognition/RuleRemoval.h"

#include <algorithm>
#include <cstdlib>

namespace velmor {

namespace {

/// Paper is above this, faint dotted rules are below.
constexpr uchar darkBelow = 205;

/// Lengths in inches.
constexpr double shortestRule = 1.0; ///< Longer than any letter, or bar over a word.
constexpr double widestGap = 0.015;  ///< Between the dots of one rule; leaders are set wider.
constexpr double reach = 0.02;       ///< Half a rule's thickness, at most.

int pixels(double inches, int dpi)
{
    return std::max(1, static_cast<int>(inches * dpi));
}

/// Whitens rules within one row at a time, asking a copy of the page what is there.
class RuleEraser {
public:
    RuleEraser(QImage &page, int dpi)
        : m_page(page), m_before(page.copy()), m_shortest(pixels(shortestRule, dpi)),
          m_gap(pixels(widestGap, dpi)), m_reach(pixels(reach, dpi))
    {
    }

    /// Looks at a few places only: any rule long enough runs through one of them.
    void eraseRow(int y)
    {
        const uchar *row = m_before.constScanLine(y);
        const int step = std::max(1, m_shortest / 2);
        for (int x = step; x < m_before.width(); x += step) {
            const int end = endOfRun(row, x, 1);
            erase(y, endOfRun(row, x, -1), end);
            x = std::max(x, end);
        }
    }

private:
    /// How far `row` runs dark from `x` in steps of `direction`, gaps bridged; `x` itself when it
    /// doesn't.
    [[nodiscard]] int endOfRun(const uchar *row, int x, int direction) const
    {
        int end = x;
        for (int i = x; i >= 0 && i < m_before.width() && std::abs(i - end) <= m_gap + 1;
             i += direction) {
            if (row[i] < darkBelow)
                end = i;
        }
        return end;
    }

    /// What runs dark from `begin` to `last` in row `y`, if that is long enough.
    void erase(int y, int begin, int last)
    {
        if (last - begin + 1 < m_shortest)
            return;
        const uchar *above = m_before.constScanLine(std::max(0, y - m_reach));
        const uchar *below = m_before.constScanLine(std::min(m_before.height() - 1, y + m_reach));
        for (int x = begin; x <= last; ++x) {
            if (above[x] >= darkBelow && below[x] >= darkBelow)
                whiten(x, y);
        }
    }

    /// A rule's soft edge lies in the rows beside it.
    void whiten(int x, int y)
    {
        for (int row = std::max(0, y - 1); row <= std::min(m_page.height() - 1, y + 1); ++row)
            m_page.scanLine(row)[x] = 255;
    }

    QImage &m_page;
    const QImage m_before;
    const int m_shortest;
    const int m_gap;
    const int m_reach;
};

} // namespace

void removeRules(QImage &page, int dpi)
{
    RuleEraser eraser(page, dpi);
    for (int y = 0; y < page.height(); ++y)
        eraser.eraseRow(y);
}

} // namespace velmor
