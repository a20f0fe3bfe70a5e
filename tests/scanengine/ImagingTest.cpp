#include "TestImages.h"
#include "scanengine/imaging/ColorMode.h"
#include "scanengine/imaging/Levels.h"
#include "scanengine/imaging/Resample.h"

#include <gtest/gtest.h>

namespace scanengine {
namespace {

constexpr int dotsPerMeterAt300 = 11811;

QImage coloredPage(QColor color)
{
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

TEST(Resample, EachAxisGoesFromItsOwnResolution)
{
    const struct {
        const char *what;
        QSize size;
        int dotsPerMeterX, dotsPerMeterY, dpi;
        QSize expected;
    } cases[] = {
        {"same resolution", {2481, 3507}, 11811, 11811, 300, {2481, 3507}},
        {"half",            {2480, 3508}, 11811, 11811, 150, {1240, 1754}},
        {"fax page",        {204, 98},    8031,  3858,  300, {300, 300}  },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        QImage image = greyPage(c.size, 200, 300);
        image.setDotsPerMeterX(c.dotsPerMeterX);
        image.setDotsPerMeterY(c.dotsPerMeterY);
        const auto result = atResolution(image, c.dpi);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->size(), c.expected);
        EXPECT_EQ(result->format(), QImage::Format_Grayscale8);
        EXPECT_EQ(result->dotsPerMeterX(), qRound(c.dpi / 0.0254));
        EXPECT_EQ(result->dotsPerMeterY(), result->dotsPerMeterX());
        EXPECT_EQ(greyLevel(*result), 200);
    }
}

TEST(Resample, RefusesAPageBeyondTheLimitBeforeItIsMade)
{
    EXPECT_FALSE(atResolution(greyPage({30'000, 1}, 0, 30), 1'000'000));
    EXPECT_FALSE(atResolution(greyPage({2000, 2000}, 0, 30), 1200));
}

TEST(ColorMode, BlackAndWhitePartsInkFromPaperOfAnyLightness)
{
    const struct {
        const char *what;
        int ink, paper;
        bool isInkBlack, isPaperWhite;
    } cases[] = {
        {"print",                0,   255, true,  true},
        {"print on brown paper", 20,  110, true,  true},
        {"blank white page",     246, 250, false, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        QImage page = greyPage({21, 10}, c.paper, 300); // A width that fills no whole byte.
        for (int y = 0; y < page.height(); ++y)
            page.setPixelColor(20, y, QColor(c.ink, c.ink, c.ink));
        const QImage result = inColorMode(page, ColorMode::blackWhite);
        EXPECT_EQ(result.format(), QImage::Format_Mono);
        EXPECT_EQ(result.dotsPerMeterX(), dotsPerMeterAt300);
        EXPECT_EQ(result.pixelColor(20, 9) == Qt::black, c.isInkBlack);
        EXPECT_EQ(result.pixelColor(19, 9) == Qt::white, c.isPaperWhite);
        EXPECT_EQ(result.pixelColor(0, 0) == Qt::white, c.isPaperWhite);
    }
}

TEST(Levels, BrightnessMovesAndContrastSpreadsTheLevels)
{
    const struct {
        int level, brightness, contrast, expected;
    } cases[] = {
        {100, 30,    0,     110},
        {100, 1000,  0,     255},
        {200, -9000, 0,     0  },
        {100, 0,     900,   72 },
        {160, 0,     900,   192},
        {100, 84,    900,   128}, // The level that brightness puts in the middle
                             // stays there.
        {60,  0,     -9000, 96 },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.level << " " << c.brightness << " " << c.contrast);
        const QImage grey = withLevels(greyPage({5, 5}, c.level, 300), c.brightness, c.contrast);
        EXPECT_EQ(greyLevel(grey), c.expected);
        EXPECT_EQ(grey.dotsPerMeterX(), dotsPerMeterAt300);
        const QImage red =
            withLevels(coloredPage(QColor(c.level, 128, 128)), c.brightness, c.contrast);
        EXPECT_EQ(red.pixelColor(4, 4).red(), c.expected);
    }
}

TEST(Levels, NeverTurnLevelsAroundNorJump)
{
    QImage ramp = greyPage({256, 1}, 0, 300);
    for (int x = 0; x < 256; ++x)
        ramp.setPixelColor(x, 0, QColor(x, x, x));
    EXPECT_EQ(withLevels(ramp, 0, 0), ramp);
    const int settings[] = {-1000, -384, -60, -1, 0, 1, 60, 384, 850, 1000};
    for (const int brightness : settings) {
        for (const int contrast : settings) {
            SCOPED_TRACE(testing::Message() << brightness << " " << contrast);
            const QImage result = withLevels(ramp, brightness, contrast);
            for (int x = 1; x < 256; ++x) {
                const int step = qGray(result.pixel(x, 0)) - qGray(result.pixel(x - 1, 0));
                ASSERT_GE(step, 0) << "at " << x;
                ASSERT_LE(step, 3) << "at " << x;
            }
        }
    }
}

TEST(Levels, PressDetailTogetherBeforeLosingIt)
{
    // Two levels that a straight line would both carry past white.
    const QImage light = withLevels(greyPage({5, 5}, 235, 300), 60, 200);
    const QImage lighter = withLevels(greyPage({5, 5}, 245, 300), 60, 200);
    EXPECT_LT(greyLevel(light), greyLevel(lighter));
    EXPECT_GT(greyLevel(light), 235);
}

} // namespace
} // namespace scanengine
