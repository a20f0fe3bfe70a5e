#include "pipeline/recognition/PageSplit.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

/// An A4 page at the grid's usual 75 dpi.
constexpr QSize a4(620, 877);

class Page {
public:
    Page()
    {
        m_ink.width = a4.width();
        m_ink.height = a4.height();
        m_ink.dark.assign(static_cast<size_t>(a4.width() * a4.height()), 0);
    }
    Page &block(int left, int top, int width, int height)
    {
        for (int y = top; y < top + height; ++y) {
            for (int x = left; x < left + width; ++x)
                m_ink.dark[static_cast<size_t>(y * a4.width() + x)] = 1;
        }
        return *this;
    }
    /// Lines of eight cells' height, twelve apart.
    Page &text(int left, int top, int width, int lines)
    {
        for (int line = 0; line < lines; ++line)
            block(left, top + line * 12, width, 8);
        return *this;
    }
    operator const InkMap &() const { return m_ink; }

private:
    InkMap m_ink;
};

/// Where in `blocks` the cell is; -1 for nowhere.
int placeOf(const std::vector<QRect> &blocks, int x, int y)
{
    for (size_t i = 0; i < blocks.size(); ++i) {
        if (blocks[i].contains(x, y))
            return static_cast<int>(i);
    }
    return -1;
}

void expectToCoverThePageOnce(const std::vector<QRect> &blocks)
{
    qint64 area = 0;
    for (size_t i = 0; i < blocks.size(); ++i) {
        area += qint64{blocks[i].width()} * blocks[i].height();
        EXPECT_TRUE(QRect(QPoint(0, 0), a4).contains(blocks[i]));
        for (size_t j = 0; j < i; ++j)
            EXPECT_FALSE(blocks[i].intersects(blocks[j]));
    }
    EXPECT_EQ(area, qint64{a4.width()} * a4.height());
}

TEST(TextBlocks, StandInReadingOrder)
{
    struct Case {
        const char *what;
        Page page;
        std::vector<QPoint> inOrder; ///< Points of blocks that follow each other.
    };
    const Case cases[] = {
        {"paragraphs", Page().text(60, 60, 500, 8).text(60, 180, 500, 8), {{70, 62}, {70, 190}}},
        {"two columns with paragraphs at one height",
         Page()
             .text(60, 60, 240, 8)
             .text(60, 180, 240, 8)
             .text(330, 60, 240, 8)
             .text(330, 180, 240, 8),
         {{70, 62}, {70, 190}, {340, 62}, {340, 190}}},
        {"a title over two columns",
         Page().block(60, 20, 500, 20).text(60, 60, 240, 12).text(330, 60, 240, 12),
         {{70, 25}, {70, 62}, {340, 62}}},
        {"a short title over two columns, and a foot line",
         Page()
             .block(60, 20, 90, 20)
             .text(60, 60, 240, 12)
             .text(330, 60, 240, 12)
             .block(60, 700, 500, 8),
         {{70, 25}, {340, 62}, {70, 704}}},
        {"three columns",
         Page().text(30, 60, 170, 12).text(220, 60, 170, 12).text(410, 60, 170, 12),
         {{40, 62}, {230, 62}, {420, 62}}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const std::vector<QRect> blocks = textBlocks(c.page);
        expectToCoverThePageOnce(blocks);
        for (size_t i = 1; i < c.inOrder.size(); ++i) {
            EXPECT_LT(placeOf(blocks, c.inOrder[i - 1].x(), c.inOrder[i - 1].y()),
                      placeOf(blocks, c.inOrder[i].x(), c.inOrder[i].y()));
        }
    }
}

TEST(TextBlocks, KeepTheRowsOfATableTogether)
{
    Page table;
    for (int row = 0; row < 12; ++row)
        table.block(60, 60 + row * 24, 120 + row % 3 * 40, 8).block(500, 60 + row * 24, 40, 8);
    const std::vector<QRect> blocks = textBlocks(table);
    for (int row = 0; row < 12; ++row)
        EXPECT_EQ(placeOf(blocks, 62, 62 + row * 24), placeOf(blocks, 502, 62 + row * 24)) << row;
}

TEST(TextBlocks, TakeNoTableWithSeveralFiguresARowForColumns)
{
    Page table;
    for (int row = 0; row < 12; ++row) {
        table.block(60, 60 + row * 24, 180 + row % 3 * 20, 8);
        for (int left : {330, 420, 520})
            table.block(left, 60 + row * 24, 24, 8);
    }
    const std::vector<QRect> blocks = textBlocks(table);
    for (int row = 0; row < 12; ++row)
        EXPECT_EQ(placeOf(blocks, 62, 62 + row * 24), placeOf(blocks, 522, 62 + row * 24)) << row;
}

TEST(PageSplit, SharesThePageFairlyAndInOrder)
{
    struct Case {
        const char *what;
        Page page;
        QPoint inFirst;
        QPoint inSecond;
    };
    const Case cases[] = {
        {"paragraphs of unequal length",
         Page().text(60, 40, 500, 5).text(60, 120, 500, 20).text(60, 380, 500, 25),
         {70, 300},
         {70, 390}},
        {"two columns", Page().text(60, 60, 240, 40).text(330, 60, 240, 40), {70, 500}, {340, 62}},
        {"one block without a gap", Page().text(60, 60, 500, 50), {70, 100}, {70, 600}},
        {"small print takes longer than large",
         Page()
             .block(60, 40, 500, 30)
             .block(60, 100, 500, 30)
             .block(60, 160, 500, 30)
             .text(60, 240, 500, 8)
             .text(60, 360, 500, 8),
         {70, 250},
         {70, 370}},
        {"a picture counts for nothing",
         Page().block(60, 20, 500, 400).text(60, 440, 500, 12).text(60, 620, 500, 12),
         {70, 450},
         {70, 630}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const auto halves = splitPage(c.page);
        ASSERT_TRUE(halves);
        EXPECT_NE(placeOf(halves->first, c.inFirst.x(), c.inFirst.y()), -1);
        EXPECT_NE(placeOf(halves->second, c.inSecond.x(), c.inSecond.y()), -1);
        std::vector<QRect> all = halves->first;
        all.insert(all.end(), halves->second.begin(), halves->second.end());
        expectToCoverThePageOnce(all);
    }
}

TEST(PageSplit, LeavesPagesWholeThatHaveNoGoodGap)
{
    EXPECT_FALSE(splitPage(Page())) << "blank";
    EXPECT_FALSE(splitPage(Page().text(60, 60, 300, 1))) << "a single line";
    EXPECT_FALSE(splitPage(Page().block(60, 60, 500, 700))) << "a picture";
    EXPECT_FALSE(splitPage(Page().text(60, 60, 500, 50).block(300, 0, 4, 877)))
        << "a line from top to bottom";
    EXPECT_FALSE(splitPage(InkMap())) << "no cells";
}

TEST(PagePart, ShowsItsOwnCellsAloneWhereTheyWere)
{
    QImage page(43, 41, QImage::Format_Grayscale8); // not whole cells
    page.fill(7);
    const InkMap ink = inkMap(page, 300);
    const PagePart part = pagePart(page, ink, {QRect(2, 1, 3, 4), QRect(5, 5, 5, 5)});
    EXPECT_EQ(part.origin, QPoint(8, 4));
    EXPECT_EQ(part.pixels.size(), QSize(35, 37)) << "up to the page's very edge";
    EXPECT_EQ(qGray(part.pixels.pixel(0, 0)), 7);
    EXPECT_EQ(qGray(part.pixels.pixel(34, 36)), 7);
    EXPECT_EQ(qGray(part.pixels.pixel(34, 0)), 255) << "beside the first";
    EXPECT_EQ(qGray(part.pixels.pixel(0, 36)), 255) << "beside the second";
}

TEST(InkMaps, FindInkButNotPaper)
{
    QImage page(400, 400, QImage::Format_Grayscale8);
    page.fill(235);
    EXPECT_TRUE(isBlank(inkMap(page, 300)));
    for (int x = 100; x < 300; ++x) { // a stroke of two pixels
        page.scanLine(200)[x] = 40;
        page.scanLine(201)[x] = 40;
    }
    const InkMap ink = inkMap(page, 300);
    EXPECT_FALSE(isBlank(ink));
    EXPECT_TRUE(ink.at(30, 50));
    EXPECT_FALSE(ink.at(30, 52));
}

TEST(InkMaps, ShowWhereTheTextIs)
{
    Page page;
    page.block(0, 0, 300, 300); // a picture
    for (int line = 0; line < 15; ++line) {
        for (int letter = 0; letter < 40; ++letter)
            page.block(350 + letter * 6, 560 + line * 12, 4, 8);
    }
    const QRect square = busiestSquare(page, 3.3);
    EXPECT_TRUE(square.intersects(QRect(400 * inkCell, 600 * inkCell, 50, 50)));
    EXPECT_LE(square.width(), 248 * inkCell);
}

} // namespace
} // namespace velmor
