#include "pipeline/recognition/LineOrder.h"

#include "pipeline/recognition/LineAssembly.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velmor {
namespace {

/// An A4 page at 300 dpi with words in lines 30 pixels high, whose ink is solid. Turned about its
/// upper left corner by a slope, as a sheet that lies askew.
class Page {
public:
    explicit Page(double slope = 0) : m_slope(slope)
    {
        m_ink.width = 2480 / inkCell;
        m_ink.height = 3508 / inkCell;
        m_ink.dark.assign(static_cast<size_t>(m_ink.width * m_ink.height), 0);
    }

    /// A line of words of the same width, parted by `gap` pixels, that are all `text`.
    Page &line(const char *text, int left, int top, int width, int words = 1, int gap = 10)
    {
        RecognizedWords found;
        const int step = width / words;
        for (int i = 0; i < words; ++i)
            found.push_back(word(QString::fromUtf8(text), left + i * step, top, step - gap));
        m_text.lines.push_back(std::move(found));
        return *this;
    }
    /// Lines below each other, named by a letter and their number.
    Page &column(const char *letter, int left, int top, int width, int lines)
    {
        for (int i = 0; i < lines; ++i) {
            const std::string name = letter + std::to_string(i + 1);
            line(name.c_str(), left, top + i * 50, width - i % 3 * 40, 5);
        }
        return *this;
    }

    /// The first word of each line in the order found.
    [[nodiscard]] std::string order() const
    {
        QStringList found;
        for (const RecognizedWords &words : inReadingOrder(m_text, m_ink).lines)
            found.append(words.front().text);
        return found.join(u' ').toStdString();
    }

private:
    RecognizedWord word(const QString &text, int left, int top, int width)
    {
        const int x = left - static_cast<int>(std::lround(m_slope * top));
        const int y = top + static_cast<int>(std::lround(m_slope * left));
        for (int row = y / inkCell; row < (y + 30) / inkCell; ++row) {
            for (int column = x / inkCell; column < (x + width) / inkCell; ++column)
                m_ink.dark[static_cast<size_t>(row * m_ink.width + column)] = 1;
        }
        return {text, QRect(x, y, width, 30), 95};
    }

    double m_slope;
    InkMap m_ink;
    TextAnswer m_text;
};

/// A table as the recognition tends to hand it over: column by column.
Page table(double slope)
{
    Page page(slope);
    page.line("title", 300, 300, 1700, 5);
    for (int row = 0; row < 6; ++row)
        page.line(("item" + std::to_string(row + 1)).c_str(), 300, 400 + row * 70, 500);
    for (int row = 0; row < 6; ++row)
        page.line(("price" + std::to_string(row + 1)).c_str(), 1900, 400 + row * 70, 120);
    return page;
}

TEST(LineOrder, ReadsTablesByRowsAndTextByColumns)
{
    const char *rows = "title item1 price1 item2 price2 item3 price3 item4 price4 item5 price5 "
                       "item6 price6";
    const struct {
        const char *what;
        Page page;
        const char *order;
    } cases[] = {
        {"a table that falls", table(0.03), rows},
        {"columns, in whatever order",
         Page().column("b", 1300, 400, 900, 5).column("a", 200, 400, 900, 5),
         "a1 a2 a3 a4 a5 b1 b2 b3 b4 b5"},
        {"columns askew", Page(0.03).column("a", 300, 400, 900, 5).column("b", 1300, 400, 900, 5),
         "a1 a2 a3 a4 a5 b1 b2 b3 b4 b5"},
        {"a line divided within a paragraph",
         Page()
             .line("a1", 200, 400, 500, 4)
             .line("a2", 200, 450, 900, 4)
             .line("a1b", 710, 404, 400),
         "a1 a1b a2"},
        {"right to left",
         Page().line("\u0628\u0643\u0645", 300, 400, 100).line("\u0623\u0647", 1500, 400, 300),
         "\u0623\u0647 \u0628\u0643\u0645"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(c.page.order(), c.order) << c.what;
}

TEST(LineOrder, DividesALineThatReachesAcrossColumns)
{
    Page page;
    page.column("a", 200, 400, 900, 5).column("b", 1300, 400, 900, 5);
    page.line("x", 200, 650, 2200, 2, 300);
    EXPECT_EQ(page.order(), "a1 a2 a3 a4 a5 x b1 b2 b3 b4 b5 x");
}

TEST(LineOrder, LeavesLinesThatRunUpOrDownAsTheyCame)
{
    TextAnswer text;
    for (int line = 0; line < 3; ++line) {
        const int x = 900 - line * 100;
        const QString name = QString::number(line);
        text.lines.push_back({
            {name, QRect(x, 200, 30, 100), 95},
            {name, QRect(x, 320, 30, 100), 95}
        });
    }
    InkMap ink{.width = 620, .height = 877, .dpi = 75, .dark = {}};
    ink.dark.assign(static_cast<size_t>(620 * 877), 0);
    EXPECT_EQ(inReadingOrder(text, ink), text);
}

} // namespace
} // namespace velmor
