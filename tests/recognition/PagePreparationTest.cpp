#include "pipeline/recognition/PagePreparation.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velmor {
namespace {

QImage paper(QSize size, QColor colour = Qt::white, double dpi = 300)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    image.setDotsPerMeterX(static_cast<int>(std::lround(dpi / 0.0254)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    return image;
}

void paint(QImage &image, const QRect &area, QColor colour)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            image.setPixelColor(x, y, colour);
    }
}

int greyAt(const PreparedPage &page, int x, int y)
{
    return page.pixels.constScanLine(y)[x];
}

TEST(PagePreparation, BringsImagesTo300DpiAtMost)
{
    const struct {
        const char *what;
        QSize size;
        double dpi; ///< As the image claims; 0 for nothing.
        QSize prepared;
        int preparedDpi;
    } cases[] = {
        {"as scanned",                      {2480, 3508}, 300, {2480, 3508}, 300},
        {"high resolution",                 {1200, 600},  600, {600, 300},   300},
        {"camera that claims screen's dpi", {3024, 4676}, 72,  {2268, 3507}, 300},
        {"screen's dpi, of a scan's size",  {1240, 1754}, 96,  {1240, 1754}, 150},
        {"a strip longer than can be read", {400'000, 2}, 300, {32'000, 1},  72 },
        {"claims nonsense",                 {4676, 3024}, 1e5, {3507, 2268}, 300},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const auto page = preparePage(paper(c.size, Qt::white, c.dpi));
        ASSERT_TRUE(page);
        EXPECT_EQ(page->pixels.size(), c.prepared);
        EXPECT_NEAR(page->dpi, c.preparedDpi, 1);
    }
}

TEST(PagePreparation, MakesEveryPaperWhiteAndItsPrintDark)
{
    const struct {
        const char *what;
        QColor paper;
        QColor print;
    } cases[] = {
        {"deep red paper",             {200, 30, 30},   {20, 5, 5}    },
        {"pale yellow print on white", {250, 250, 250}, {250, 230, 60}},
        {"paper in the shade",         {110, 105, 95},  {25, 25, 25}  },
    };
    for (const auto &c : cases) {
        QImage image = paper({600, 600}, c.paper);
        paint(image, {100, 300, 200, 8}, c.print);
        const auto page = preparePage(image);
        ASSERT_TRUE(page);
        EXPECT_GT(greyAt(*page, 500, 100), 225) << c.what;
        EXPECT_LT(greyAt(*page, 150, 304), 120) << c.what;
    }
}

TEST(PagePreparation, EvensOutAShadowAcrossThePage)
{
    QImage image = paper({1600, 400});
    for (int y = 0; y < 400; ++y) {
        for (int x = 0; x < 1600; ++x) {
            const double light = 1 - 0.6 * x / 1600;
            const int value = y > 196 && y < 204 && x % 300 < 200 ? 60 : 245;
            const int shaded = static_cast<int>(value * light);
            image.setPixel(x, y, qRgb(shaded, shaded, shaded));
        }
    }
    const auto page = preparePage(image);
    ASSERT_TRUE(page);
    for (int x = 50; x < 1600; x += 300) {
        EXPECT_GT(greyAt(*page, x, 100), 225) << x;
        EXPECT_LT(greyAt(*page, x, 200), 110) << x;
    }
}

TEST(PagePreparation, TurnsBlocksSetLightOnDarkOver)
{
    QImage image = paper({1200, 900});
    const QRect block(100, 100, 900, 300);
    paint(image, block, {40, 40, 60});
    for (int x = 150; x < 900; x += 24) // strokes as of letters
        paint(image, {x, 220, 8, 40}, Qt::white);
    const auto page = preparePage(image);
    ASSERT_TRUE(page);
    EXPECT_GT(greyAt(*page, 170, 150), 180) << "ground";
    EXPECT_LT(greyAt(*page, 154, 240), 80) << "letter";
    EXPECT_GT(greyAt(*page, 600, 700), 225) << "the page beside it";
    for (int x = 300; x < 800; x += 7)
        EXPECT_GT(greyAt(*page, x, block.top()), 150) << "its edge leaves no line";
}

TEST(PagePreparation, LeavesLargeBoldPrintAlone)
{
    QImage image = paper({1600, 600});
    for (int x = 100; x < 1400; x += 60)
        paint(image, {x, 200, 30, 120}, Qt::black);
    const auto page = preparePage(image);
    ASSERT_TRUE(page);
    for (int x = 100; x < 1400; x += 60) {
        EXPECT_LT(greyAt(*page, x + 15, 260), 60);
        EXPECT_GT(greyAt(*page, x + 45, 260), 200);
    }
}

TEST(PagePreparation, TakesRulesOutAndLeavesLetters)
{
    QImage image = paper({1200, 400});
    paint(image, {100, 200, 900, 3}, {120, 120, 120}); // a rule
    paint(image, {400, 170, 6, 60}, Qt::black);        // a letter across it
    paint(image, {100, 300, 120, 6}, Qt::black);       // a dash
    for (int x = 300; x < 1000; x += 12)
        paint(image, {x, 304, 4, 4}, Qt::black); // leaders
    const auto page = preparePage(image);
    ASSERT_TRUE(page);
    EXPECT_GT(greyAt(*page, 250, 201), 250) << "rule";
    EXPECT_LT(greyAt(*page, 403, 201), 60) << "letter on the rule";
    EXPECT_LT(greyAt(*page, 150, 302), 60) << "dash";
    EXPECT_LT(greyAt(*page, 301, 305), 60) << "leaders";
}

} // namespace
} // namespace velmor
