#include "pipeline/recognition/RuleRemoval.h"

#include <algorithm>

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

    void eraseRow(int y)
    {
        const uchar *row = m_before.constScanLine(y);
        int begin = -1;
        int last = -1;
        for (int x = 0; x < m_before.width(); ++x) {
            if (row[x] >= darkBelow)
                continue;
            if (begin < 0 || x - last > m_gap + 1) {
                erase(y, begin, last);
                begin = x;
            }
            last = x;
        }
        erase(y, begin, last);
    }

private:
    /// What runs dark from `begin` to `last` in row `y`, if that is long enough.
    void erase(int y, int begin, int last)
    {
        if (begin < 0 || last - begin + 1 < m_shortest)
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
