#include "pipeline/recognition/PageSplit.h"

#include <gtest/gtest.h>

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
    const struct {
        const char *what;
        Page page;
        std::vector<QPoint> inOrder; ///< Points of blocks that follow each other.
    } cases[] = {
        {"two columns with paragraphs at one height",
         Page()
             .text(60,  60, 240, 8)
             .text(60, 180, 240, 8)
             .text(330, 60, 240, 8)
             .text(330, 180, 240, 8),
         {{70, 62}, {70, 190}, {340, 62}, {340, 190}}},
        {"a short title over two columns, and a foot line",
         Page()
             .block(60, 20, 90,  20)
             .text(60,  60,  240, 12)
             .text(330, 60, 240, 12)
             .block(60, 700, 500, 8),
         {{70, 25}, {340, 62}, {70, 704}}            },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const std::vector<QRect> blocks = textBlocks(c.page);
        expectToCoverThePageOnce(blocks);
        for (size_t i = 1; i < c.inOrder.size(); ++i) {
            EXPECT_LT(placeOf(blocks, c.inOrder[i - 1].x(), c.inOrder[i - 1].y()),
                      placeOf(blocks, c.inOrder[i].x(), c.inOrder[i].y()));
        }
    }
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
    const struct {
        const char *what;
        Page page;
        QPoint inFirst;
        QPoint inSecond;
    } cases[] = {
        {"paragraphs of unequal length",
         Page().text(60, 40, 500, 5).text(60, 120, 500, 20).text(60, 380, 500, 25),
         {70, 300},
         {70, 390}},
        {"one block without a gap", Page().text(60, 60, 500, 50), {70, 100}, {70, 600}},
        {"a picture counts for nothing",
         Page().block(60, 20, 500, 400).text(60, 440, 500, 12).text(60, 620, 500, 12),
         {70, 450},
         {70, 630}},
    };
    for (const auto &c : cases) {
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

} // namespace
} // namespace velmor
