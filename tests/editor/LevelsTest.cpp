#include "editor/EditorWords.h"
#include "editor/LevelsAnalysis.h"
#include "editor/LevelsTrack.h"
#include "editor/MagicLevels.h"
#include "pipeline/PageRaster.h"
#include "tests/Printers.h"
#include "tests/pipeline/TestPages.h"

#include <gmock/gmock.h>

#include <functional>
#include <numeric>

namespace velmor {
namespace {

using testing::DoubleEq;
using testing::ElementsAre;
using testing::Pointwise;

QImage painted(QSize size, const std::function<QRgb(int x, int y)> &colour)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, colour(x, y));
    return image;
}

QRgb grey(int level)
{
    return qRgb(level, level, level);
}

TEST(LevelsAnalysis, MeasuresSinglePixelsAndBinsThemAll)
{
    const QImage image = painted({3, 2}, [](int x, int y) {
        return y == 1 ? qRgb(10, 20, 30) : x == 0 ? qRgb(255, 0, 0) : grey(x == 1 ? 3 : 255);
    });
    const auto sample = rgbaBuffer(image);
    ASSERT_TRUE(sample);
    EXPECT_THAT(std::vector(sample->buf.begin(), sample->buf.begin() + 5),
                ElementsAre(255, 0, 0, 255, 3));
    EXPECT_DOUBLE_EQ(sampleLuminance(*sample, {0, 0}), 76245 / 255000.0);
    EXPECT_DOUBLE_EQ(sampleLuminance(*sample, {1, 0.4999}), 1);
    EXPECT_DOUBLE_EQ(sampleLuminance(*sample, {0.34, 0.5}), 18150 / 255000.0);
    QList<int> bins(64, 0);
    bins[76 / 4] = 1;
    bins[0] = 1;
    bins[63] = 1;
    bins[18 / 4] = 3;
    EXPECT_EQ(histogram64(*sample), bins);
    EXPECT_FALSE(rgbaBuffer(QImage()));
}

/// A page of 30 by 30 places at which it is looked at, of which every third column is dark: 20
/// edges a row of places.
QImage striped(const std::function<QRgb(int row)> &dark, const std::function<QRgb(int row)> &paper)
{
    return painted({92, 92}, [&](int x, int y) { return x % 9 < 3 ? dark(y / 3) : paper(y / 3); });
}

TEST(LevelsAnalysis, AutoMakesPrintReadable)
{
    const auto all = [](QRgb colour) {
        return [colour](int) {
            return colour;
        };
    };
    const auto sparse = [](int row) {
        return grey(row < 9 ? 60 : 240);
    };
    const auto inks = [](int row) {
        return grey(20 + 10 * (row % 10));
    };
    const auto papers = [](int row) {
        return grey(220 + row % 10);
    };
    const auto shaded = [](int row) {
        return grey(row < 6 ? 227 : 240);
    };
    const auto paper = all(grey(240));
    const auto mute = all(qRgb(152, 120, 120));
    const auto vivid = all(qRgb(153, 120, 120));
    const struct {
        const char *what;
        QImage page;
        double black, white;
    } cases[] = {
        {"a white page", striped(all(grey(255)), all(grey(255))), 0.8, 0.95},
        {"smaller than the grid", striped(inks, papers).copy(0, 0, 2, 2), 0.8, 0.95},
        {"too little print", striped(sparse, paper), 0.8, 0.95},
        {"print of many levels", striped(inks, papers), 90 / 255.0, 221 / 255.0},
        {"shade that isn't paper", striped(all(grey(60)), shaded), 60 / 255.0, 240 / 255.0},
        {"faint: kept apart", striped(all(grey(226)), paper), 240 / 255.0 - 0.06, 240 / 255.0},
        {"too small a step", striped(all(grey(227)), paper), 0.8, 0.95},
        {"as dark as no ink is", striped(all(grey(2)), paper), 0.8, 0.95},
        {"as white as no paper is", striped(all(grey(60)), all(grey(253))), 0.8, 0.95},
        {"colour worth keeping", striped(vivid, all(grey(220))), 0.45, 0.88},
        {"colour too pale for that", striped(mute, all(grey(220))), 129 / 255.0, 220 / 255.0},
    };
    for (const auto &c : cases) {
        const MagicLevels levels = autoLevels(rgbaBuffer(c.page).value());
        EXPECT_NEAR(levels.blackLum, c.black, 1e-12) << c.what;
        EXPECT_NEAR(levels.whiteLum, c.white, 1e-12) << c.what;
        EXPECT_EQ(levels.gamma, 0.85);
        EXPECT_EQ(levels.clicksSoFar, 2);
    }
}

TEST(LevelsAnalysis, BarsAreScaledByTheNinetiethPercentile)
{
    QList<int> eleven(64, 0);
    std::iota(eleven.begin(), eleven.begin() + 11, 1);
    const QList<double> bars = displayHistogram(eleven, {});
    EXPECT_DOUBLE_EQ(bars[2], std::sqrt(0.3));
    EXPECT_EQ(bars[9], 1);
    EXPECT_EQ(bars[10], 1) << "a peak is cut";
    EXPECT_EQ(bars[11], 0);
    EXPECT_TRUE(displayHistogram({}, {}).isEmpty());
    EXPECT_EQ(displayHistogram(QList<int>(64, 0), {}), QList<double>(64, 0));
}

TEST(LevelsAnalysis, BarsMoveWithTheLevels)
{
    const struct {
        MagicLevels levels;
        int from, to;
    } cases[] = {
        {{0, 1, 1, 2},       48, 48},
        {{0.5, 1, 1, 2},     48, 32},
        {{0.5, 1, 1, 2},     31, 0 },
        {{0, 0.5, 1, 2},     40, 63},
        {{0, 1, 2, 2},       32, 16},
        {{0.75, 0.75, 1, 2}, 48, 24}, // as if 0.02 apart
    };
    for (const auto &c : cases) {
        QList<int> raw(64, 0);
        raw[c.from] = 7;
        QList<double> bars(64, 0);
        bars[c.to] = 1;
        EXPECT_EQ(displayHistogram(raw, c.levels), bars) << c.from << " to " << c.to;
    }
}

TEST(MagicLevels, ClicksSetBlackThenWhiteThenTheNearerOne)
{
    const struct {
        const char *what;
        QList<double> clicks;
        double black, white;
        int clicksSoFar;
    } cases[] = {
        {"ink",                  {0.2},             0.2,  1,    1},
        {"on pure white",        {1},               0.99, 1,    1},
        {"ink, then paper",      {0.2, 0.9},        0.2,  0.9,  2},
        {"the other way round",  {0.9, 0.2},        0.2,  0.9,  2},
        {"the same spot",        {0.4, 0.4},        0.4,  0.45, 2},
        {"pure white twice",     {1, 1},            0.99, 1.04, 2},
        {"then nearer to black", {0.2, 0.8, 0.4},   0.4,  0.8,  2},
        {"nearer to white",      {0.2, 0.8, 0.6},   0.2,  0.6,  2},
        {"a tie goes to black",  {0.25, 0.75, 0.5}, 0.5,  0.75, 2},
        {"never up to white",    {0.5, 0.52, 0.53}, 0.5,  0.53, 2},
    };
    for (const auto &c : cases) {
        MagicLevels levels;
        for (const double luminance : c.clicks)
            levels.click(luminance);
        EXPECT_DOUBLE_EQ(levels.blackLum, c.black) << c.what;
        EXPECT_DOUBLE_EQ(levels.whiteLum, c.white) << c.what;
        EXPECT_EQ(levels.clicksSoFar, c.clicksSoFar) << c.what;
    }
}

TEST(MagicLevels, SoftnessIsAViewOfGamma)
{
    MagicLevels levels{.blackLum = 0, .whiteLum = 1, .gamma = 0.85, .clicksSoFar = 1};
    EXPECT_NEAR(levels.softness(), 0.578, 0.0005);
    levels.setSoftness(0);
    EXPECT_EQ(EditorWords::gammaReadout(levels), u"γ 2.83");
    levels.setSoftness(1);
    EXPECT_NEAR(levels.gamma, 0.354, 0.0005);
    EXPECT_TRUE(levels.magicTouched());
    levels.setSoftness(0.5);
    EXPECT_FALSE(levels.magicTouched());
    EXPECT_EQ(levels.clicksSoFar, 1);
}

/// A track of 200 points between the knobs.
LevelsTrack track(double low = 0, double high = 1)
{
    return {
        .size = {218, 44},
          .low = low, .high = high
    };
}

TEST(LevelsTrack, KnobsStandAtTheirValuesAndPartWhereTheyMeet)
{
    EXPECT_EQ(track(0.25, 0.75).lowPos(), 59);
    EXPECT_EQ(track(0.25, 0.75).highPos(), 159);
    EXPECT_EQ(track(0.5, 0.59).highPos(), 127) << "just touching";
    EXPECT_DOUBLE_EQ(track(0.5, 0.51).lowPos(), 101);
    EXPECT_DOUBLE_EQ(track(0.5, 0.51).highPos(), 119);
    EXPECT_EQ(track(0.25, 0.75).rangeRect(), QRectF(59, 32, 100, 4));
    EXPECT_EQ(track(0.5, 0.5).rangeRect(), QRectF(108, 32, 2, 4));
    EXPECT_EQ(track().trackRect(), QRectF(4.5, 32, 209, 4));
    EXPECT_EQ((LevelsTrack{
                  .size = {10, 44}
    }
                   .trackW()),
              1);
}

TEST(LevelsTrack, APressTakesTheNearerKnobWhichStopsBeforeTheOther)
{
    const struct {
        const char *what;
        double press, to;
        double low, high;
    } cases[] = {
        {"the black one",            20,  39,   0.15, 0.75},
        {"a tie is black's",         109, 109,  0.5,  0.75},
        {"the white one",            110, 149,  0.25, 0.7 },
        {"black stops before white", 20,  1000, 0.74, 0.75},
        {"white before black",       200, -50,  0.25, 0.26},
        {"beyond the end",           200, 500,  0.25, 1   },
    };
    for (const auto &c : cases) {
        LevelsTrack slider = track(0.25, 0.75);
        slider.drag(slider.nearestKnob(c.press), c.to);
        EXPECT_DOUBLE_EQ(slider.low, c.low) << c.what;
        EXPECT_DOUBLE_EQ(slider.high, c.high) << c.what;
    }
    LevelsTrack slider = track(0.25, 0.27);
    slider.nudge(LevelsTrack::Target::high, -0.05);
    slider.nudge(LevelsTrack::Target::low, -0.5);
    EXPECT_DOUBLE_EQ(slider.high, 0.26);
    EXPECT_DOUBLE_EQ(slider.low, 0);
}

TEST(LevelsTrack, DrawsBarsAboveTheKnobs)
{
    const QList<QRectF> bars = track().bars({0, 1, 0.001, 0.5});
    EXPECT_EQ(bars[0], QRectF());
    EXPECT_EQ(bars[1], QRectF(59, 0, 49.5, 22));
    EXPECT_EQ(bars[2], QRectF(109, 21, 49.5, 1)) << "never less than a point";
    EXPECT_EQ(bars[3], QRectF(159, 11, 49.5, 11));
    EXPECT_EQ(track().bars(QList<double>(1000, 1))[0].width(), 0.5);
}

} // namespace
} // namespace velmor
