#include "TestImages.h"
#include "scanengine/imaging/BlackWhite.h"
#include "scanengine/imaging/BlankTest.h"
#include "scanengine/imaging/CleanBackground.h"
#include "scanengine/imaging/Levels.h"
#include "scanengine/imaging/PageColors.h"
#include "scanengine/imaging/PageProcessing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace scanengine {
namespace {

constexpr int dotsPerMm = 12; // At about 300 dpi.
const QColor ink(30, 30, 30);
const QColor faintPencil(205, 205, 205);

/// A sheet of 70 x 90 mm; lengths in millimetres from its top left.
class Sheet {
public:
    explicit Sheet(QColor paper = QColor(245, 245, 245))
        : m_image(70 * dotsPerMm, 90 * dotsPerMm, QImage::Format_RGB32)
    {
        m_image.fill(paper);
        m_image.setDotsPerMeterX(11811);
        m_image.setDotsPerMeterY(11811);
    }

    Sheet &fill(QRectF place, QColor color)
    {
        const QRect pixels(QPoint(at(place.left()), at(place.top())),
                           QPoint(at(place.right()) - 1, at(place.bottom()) - 1));
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x)
                m_image.setPixelColor(x, y, color);
        }
        return *this;
    }
    /// Upright strokes 0.4 mm wide and 3 mm tall side by side, as a word has them.
    Sheet &word(QPointF start, QColor color, int strokes = 8)
    {
        for (int i = 0; i < strokes; ++i)
            fill(QRectF(start.x() + i * 1.1, start.y(), 0.4, 3), color);
        return *this;
    }
    Sheet &disc(QPointF middle, double radius, QColor color)
    {
        for (int y = 0; y < m_image.height(); ++y) {
            for (int x = 0; x < m_image.width(); ++x) {
                if (std::hypot(x - at(middle.x()), y - at(middle.y())) <= at(radius))
                    m_image.setPixelColor(x, y, color);
            }
        }
        return *this;
    }
    /// A thin line of `width` millimetres, softened as a crease is.
    Sheet &crease(double y, double width)
    {
        return lit([=](double, double at) {
            return 1 - 0.08 * std::exp(-(at - y) * (at - y) / (width * width));
        });
    }
    /// With edges `pixels` wide: a few as through poor optics, many as through the paper.
    Sheet &blurred(int pixels)
    {
        const QSize size = m_image.size();
        m_image = m_image.scaled(size / pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                      .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        return *this;
    }
    /// Multiplies each pixel by what `light` answers for its place in millimetres.
    Sheet &lit(const std::function<double(double, double)> &light)
    {
        for (int y = 0; y < m_image.height(); ++y) {
            for (int x = 0; x < m_image.width(); ++x) {
                const QColor color = m_image.pixelColor(x, y);
                const double part = light(double(x) / dotsPerMm, double(y) / dotsPerMm);
                m_image.setPixelColor(x, y,
                                      QColor(int(color.red() * part), int(color.green() * part),
                                             int(color.blue() * part)));
            }
        }
        return *this;
    }
    /// Noise of about two levels, always the same.
    Sheet &grain()
    {
        quint32 state = 1;
        return lit([&](double, double) {
            state = state * 1664525 + 1013904223;
            return 1 + (double(state >> 16) / 65536 - 0.5) * 0.03;
        });
    }

    [[nodiscard]] const QImage &image() const { return m_image; }

private:
    static int at(double mm) { return int(mm * dotsPerMm); }

    QImage m_image;
};

QColor at(const QImage &image, double x, double y)
{
    return image.pixelColor(int(x * dotsPerMm), int(y * dotsPerMm));
}

QImage cleaned(const Sheet &sheet)
{
    return withCleanBackground(sheet.image(), surveyOf(sheet.image()));
}

bool isBlank(const Sheet &sheet)
{
    return isBlank(surveyOf(sheet.image()));
}

TEST(CleanBackground, MakesAnyPaperWhiteAndKeepsTheInkDark)
{
    const struct {
        const char *what;
        QColor paper;
        std::function<double(double, double)> light;
    } cases[] = {
        {"white",   QColor(245, 245, 245),
         [](double,   double) {
             return 1.0;
         }  },
        {"yellow",  QColor(236, 226, 190),
         [](double,   double) {
             return 1.0;
         }  },
        {"pastel",  QColor(205, 228, 246),
         [](double,   double) {
             return 1.0;
         }  },
        {"falloff", QColor(245, 245, 245),
         [](double x, double y) {
             return 1 - (x + y) / 500;
         }},
        {"gutter",  QColor(245, 245, 245),
         [](double x, double) {
             return 1 - 0.4 * std::exp(-x / 6);
         }},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QImage page = cleaned(
            Sheet(c.paper).word({10, 20}, ink).word({40, 60}, faintPencil).lit(c.light).grain());
        EXPECT_EQ(at(page, 30, 45), QColor(Qt::white));
        EXPECT_EQ(at(page, 4, 80), QColor(Qt::white));
        EXPECT_LT(at(page, 10.2, 21.5).green(), 50);
        EXPECT_LT(at(page, 40.2, 61.5).green(), 240);
        EXPECT_EQ(page.dotsPerMeterX(), 11811);
    }
}

TEST(CleanBackground, LeavesPicturesAndColorsAsTheyAreBesideWhitePaper)
{
    Sheet sheet(QColor(255, 255, 255));
    sheet.fill(QRectF(10, 10, 40, 30), QColor(120, 150, 90));  // A photograph...
    sheet.fill(QRectF(20, 15, 10, 10), QColor(235, 235, 235)); // ...with a light cloud.
    sheet.fill(QRectF(10, 60, 40, 5), QColor(255, 245, 120));  // Highlighter.
    sheet.fill(QRectF(10, 75, 40, 6), QColor(215, 215, 215));  // A shaded row.
    const QImage page = cleaned(sheet);
    for (const auto &[x, y] : {
             std::pair(15.0, 30.0), {25.0, 20.0},
               {49.0, 39.0},
               {30.0, 62.0},
               {30.0, 78.0}
    }) {
        SCOPED_TRACE(testing::Message() << x << ", " << y);
        const QColor before = at(sheet.image(), x, y);
        const QColor after = at(page, x, y);
        EXPECT_NEAR(after.red(), before.red(), 6);
        EXPECT_NEAR(after.green(), before.green(), 6);
        EXPECT_NEAR(after.blue(), before.blue(), 6);
    }
    EXPECT_EQ(at(page, 51.5, 25), QColor(Qt::white)) << "no halo";
}

TEST(CleanBackground, TakesAwayWhatShinesThrough)
{
    // Soft waves as dark as the faintest pencil.
    const Sheet sheet = Sheet().lit(
        [](double x, double y) { return y < 40 || y > 50 ? 1 : 1 - 0.04 * (1 + std::sin(x * 4)); });
    EXPECT_EQ(at(cleaned(sheet), 35, 45), QColor(Qt::white));
    EXPECT_TRUE(isBlank(sheet));
}

TEST(CleanBackground, LeavesAPageWithoutPaperAlone)
{
    Sheet card(QColor(190, 40, 40));
    EXPECT_EQ(cleaned(card), card.image());
    Sheet dark(QColor(20, 20, 25));
    EXPECT_EQ(cleaned(dark.word({10, 10}, QColor(250, 250, 250))), dark.image());
}

TEST(BlankTest, TellsContentFromWhatHappensToPaper)
{
    const QColor shadow(120, 120, 120);
    const struct {
        const char *what;
        Sheet sheet;
        bool isBlank;
    } cases[] = {
        {"bare paper", Sheet().grain(), true},
        {"yellowed paper", Sheet(QColor(236, 226, 190)).grain(), true},
        {"specks", Sheet().disc({30, 40}, 0.3, ink).disc({50, 20}, 0.2, ink).grain(), true},
        {"punch holes", Sheet().disc({10, 20}, 2.9, shadow).disc({10, 70}, 2.9, ink).grain(), true},
        {"a staple", Sheet().fill(QRectF(6, 8, 9, 0.5), QColor(80, 80, 85)).grain(), true},
        {"a fold", Sheet().crease(45, 0.5).grain(), true},
        {"dust", Sheet().disc({20, 25}, 0.25, shadow).disc({60, 70}, 0.2, shadow).grain(), true},
        {"a hole torn open", Sheet().disc({8, 45}, 3, QColor(200, 200, 200)).grain(), true},
        {"print of the other side",
         Sheet().word({20, 30}, QColor(228, 228, 228), 20).blurred(8).grain(), true},
        {"lid beside the sheet", Sheet().fill(QRectF(0, 0, 70, 2), ink).grain(), true},
        {"a short word", Sheet().word({40, 70}, ink, 4).grain(), false},
        {"a short word in pencil", Sheet().word({20, 50}, faintPencil, 4).grain(), false},
        {"a page number", Sheet().fill(QRectF(35, 82, 0.3, 2.2), ink).grain(), false},
        {"a pencil line", Sheet().fill(QRectF(15, 40, 30, 0.4), faintPencil).grain(), false},
        {"a line of handwriting", Sheet().fill(QRectF(30, 44, 9, 0.35), ink).grain(), false},
        {"a page number at the side", Sheet().word({8, 84}, ink, 2).grain(), false},
        {"a picture", Sheet().fill(QRectF(20, 20, 20, 20), QColor(90, 130, 160)).grain(), false},
        {"nothing but black", Sheet(QColor(10, 10, 10)).grain(), false},
    };
    for (const auto &c : cases)
        EXPECT_EQ(isBlank(c.sheet), c.isBlank) << c.what;
}

TEST(PageColors, AreTheFewestThatLoseNothing)
{
    const auto page = [](QColor paper = QColor(245, 245, 245)) {
        Sheet sheet(paper);
        for (int row = 0; row < 8; ++row)
            sheet.word({10, 10.0 + row * 8}, ink, 30);
        return sheet;
    };
    const QColor yellowed(236, 226, 190);
    const struct {
        const char *what;
        Sheet sheet;
        ColorMode expected;
    } cases[] = {
        {"print", page(), ColorMode::blackWhite},
        {"yellowed paper", page(yellowed), ColorMode::blackWhite},
        {"soft print", page().blurred(3), ColorMode::gray},
        {"fringes on solid black",
         page()
             .fill(QRectF(40, 74, 20, 12), ink)
             .fill(QRectF(60, 74, 0.35, 12), QColor(170, 90, 60)),
         ColorMode::gray},
        {"pencil", page().word({10, 80}, faintPencil, 20), ColorMode::gray},
        {"a grey picture", page().fill(QRectF(45, 60, 15, 15), QColor(140, 140, 140)),
         ColorMode::gray},
        {"a word in blue ink", page().word({50, 78}, QColor(35, 50, 140)), ColorMode::color},
        {"a small stamp", page(yellowed).fill(QRectF(50, 78, 6, 3), QColor(200, 50, 60)),
         ColorMode::color},
        {"highlighter", page().fill(QRectF(10, 79, 20, 4), QColor(245, 240, 130)),
         ColorMode::color},
    };
    for (const auto &c : cases) {
        const QImage &image = c.sheet.image();
        EXPECT_EQ(colorsOf(cleaned(c.sheet), surveyOf(image)), c.expected) << c.what;
    }
}

TEST(BlackWhite, KeepsStrokesOfAnyKindAndLeavesThePaperEmpty)
{
    Sheet sheet;
    sheet.word({10, 10}, ink).word({40, 10}, faintPencil);
    sheet.fill(QRectF(10, 30, 50, 12), ink).word({15, 34}, QColor(240, 240, 240));
    sheet.lit([](double x, double) { return 1 - x / 120; }).grain();
    const QImage page = inBlackAndWhite(sheet.image());
    EXPECT_EQ(page.format(), QImage::Format_Mono);
    EXPECT_EQ(at(page, 10.2, 11.5), QColor(Qt::black));
    EXPECT_EQ(at(page, 40.2, 11.5), QColor(Qt::black));
    EXPECT_EQ(at(page, 15.2, 35.5), QColor(Qt::white)) << "light on dark";
    EXPECT_EQ(at(page, 55, 36), QColor(Qt::black));
    for (int y = 50; y < 90; ++y) {
        for (int x = 0; x < 70; ++x)
            ASSERT_EQ(at(page, x, y), QColor(Qt::white)) << x << ", " << y;
    }
}

TEST(BlackWhite, KeepsWhatLiesBesideBlackAndTheBlackItself)
{
    Sheet sheet;
    sheet.disc({30, 40}, 12, ink).word({43, 38.5}, faintPencil).grain();
    const QImage page = inBlackAndWhite(sheet.image());
    for (int stroke = 0; stroke < 8; ++stroke)
        EXPECT_EQ(at(page, 43.2 + stroke * 1.1, 40), QColor(Qt::black)) << stroke;
    for (double x = 19; x < 41; x += 0.1)
        ASSERT_EQ(at(page, x, 40), QColor(Qt::black)) << x;
}

TEST(BlackWhite, KeepsPencilThatTouchesSomethingDark)
{
    for (const QColor &hole : {ink, QColor(140, 140, 140)}) {
        Sheet sheet;
        sheet.disc({20, 40}, 3, hole).fill(QRectF(22.9, 36, 0.4, 8), faintPencil);
        sheet.word({23.9, 40}, faintPencil).fill(QRectF(15.8, 39.8, 1.2, 0.4), faintPencil);
        const QImage page = inBlackAndWhite(sheet.blurred(2).grain().image());
        for (double y = 36.2; y < 43.8; y += 0.1)
            EXPECT_EQ(at(page, 23.1, y), QColor(Qt::black)) << hole.red() << ": " << y;
        for (double x = 16; x < 18; x += 0.1)
            EXPECT_EQ(at(page, x, 40), QColor(Qt::black)) << hole.red() << ": " << x;
        EXPECT_EQ(at(page, 20, 36.8), QColor(Qt::white)) << "no thicker";
    }
}

TEST(BlackWhite, DrawsNoLineWhereAShadeEnds)
{
    Sheet sheet;
    sheet.word({10, 10}, ink, 20).lit([](double x, double) {
        return x > 64 ? 1 : 1 - 0.1 * std::exp((x - 64) / 3);
    });
    const QImage page = inBlackAndWhite(sheet.grain().image());
    for (int y = 0; y < 90; ++y)
        ASSERT_EQ(at(page, 63.8, y), QColor(Qt::white)) << y;
}

TEST(CleanBackground, KeepsPencilThatTouchesInk)
{
    Sheet sheet;
    sheet.fill(QRectF(30, 30, 0.4, 6), ink).fill(QRectF(30, 36, 0.4, 12), QColor(222, 222, 222));
    const QImage page = cleaned(sheet.grain());
    for (int y = 38; y < 47; ++y)
        EXPECT_LT(at(page, 30.2, y).green(), 240) << y;
}

TEST(AutoLevels, SpreadFromInkToPaper)
{
    const QImage weak = withAutoLevels(Sheet(QColor(215, 215, 215))
                                           .fill(QRectF(10, 10, 50, 10), QColor(50, 50, 50))
                                           .word({10, 40}, QColor(190, 190, 190))
                                           .image());
    EXPECT_GE(at(weak, 30, 70).red(), 253);
    EXPECT_LE(at(weak, 30, 15).red(), 2);
    EXPECT_LT(at(weak, 10.2, 41.5).red(), 230) << "faint pencil";

    const Sheet full = Sheet(Qt::white).fill(QRectF(10, 10, 50, 10), Qt::black);
    EXPECT_EQ(withAutoLevels(full.image()), full.image());
    const Sheet empty(QColor(200, 200, 200));
    EXPECT_EQ(withAutoLevels(empty.image()), empty.image());
}

TEST(FinishedPage, TakesAnyImage)
{
    AutoSwitches all;
    all.cleanBackground = all.blankRemoval = all.autoLevels = true;
    all.brightness = 300;
    all.contrast = -200;
    for (const QSize size : {QSize(1, 1), QSize(1, 900), QSize(900, 1), QSize(23, 24),
                             QSize(33, 47), QSize(400, 40)}) {
        for (const int level : {0, 128, 255}) {
            for (const ColorMode mode :
                 {ColorMode::automatic, ColorMode::color, ColorMode::gray, ColorMode::blackWhite}) {
                SCOPED_TRACE(testing::Message() << size.width() << "x" << size.height() << " "
                                                << level << " " << int(mode));
                for (const QImage &image :
                     {greyPage(size, level, 300),
                      greyPage(size, level, 300).convertToFormat(QImage::Format_RGB32)}) {
                    const auto page = finishedPage(image, all, mode);
                    if (!page)
                        continue;
                    EXPECT_EQ(page->size(), size);
                    EXPECT_EQ(page->dotsPerMeterX(), image.dotsPerMeterX());
                }
            }
        }
    }
}

TEST(FinishedPage, HasTheFormatOfItsColors)
{
    const QImage grey =
        Sheet().word({10, 10}, faintPencil).image().convertToFormat(QImage::Format_Grayscale8);
    AutoSwitches clean;
    clean.cleanBackground = true;
    EXPECT_EQ(finishedPage(grey, clean, ColorMode::automatic)->format(), QImage::Format_Grayscale8);
    EXPECT_EQ(finishedPage(grey, clean, ColorMode::color)->format(), QImage::Format_RGB32);
    EXPECT_EQ(finishedPage(grey, clean, ColorMode::blackWhite)->format(), QImage::Format_Mono);
    EXPECT_EQ(*finishedPage(grey, {}, ColorMode::gray), grey) << "no switch, no change";
}

} // namespace
} // namespace scanengine
