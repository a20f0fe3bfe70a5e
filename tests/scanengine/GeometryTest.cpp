#include "TestImages.h"
#include "bench/corpus/SceneSeries.h"
#include "scanengine/imaging/PageOutline.h"
#include "scanengine/imaging/Skew.h"
#include "scanengine/imaging/Straighten.h"
#include "scanengine/imaging/Turn.h"

#include <QTransform>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace scanengine {
namespace {

using corpus::Bed;
using corpus::PlacedSheet;
using corpus::SheetContent;

constexpr int dpi = 100;
constexpr double pixelsPerMm = dpi / 25.4;
constexpr QRgb white = qRgb(246, 246, 244);

PlacedSheet sheetAt(SheetContent content, QSizeF size, QPointF center, double angle,
                    QRgb paper = white)
{
    corpus::Random random(7);
    return {corpus::makeSheet(content, size, dpi, paper, random), size, center, angle};
}

Bed bedOf(int lid, double shadow = 0)
{
    Bed bed;
    bed.dpi = dpi;
    bed.lid = qRgb(lid, lid, lid);
    bed.shadow = shadow;
    bed.noise = 1.5;
    return bed;
}

AutoSwitches switchesFor(bool crop, bool deskew)
{
    AutoSwitches switches;
    switches.crop = crop;
    switches.deskew = deskew;
    return switches;
}

/// How far the farthest content lies outside of `outline`, in millimetres.
double contentCut(const PageOutline &outline, const corpus::BedScene &scene)
{
    return scene.contentBeyond(outline.center, outline.size, outline.angle) / pixelsPerMm;
}

TEST(PageOutline, HasThePapersCornersOnEveryLid)
{
    const QSizeF a5(148, 210);
    const QPointF middle(108, 148);
    const struct {
        const char *what;
        Bed bed;
        PlacedSheet sheet;
    } cases[] = {
        {"text on black, 10 degrees", bedOf(20), sheetAt(SheetContent::text, a5, middle, 10)},
        {"text on grey", bedOf(128), sheetAt(SheetContent::text, a5, middle, -4.3)},
        {"white on white, a shadow", bedOf(247, 30), sheetAt(SheetContent::text, a5, middle, 1.7)},
        {"blank on black", bedOf(20), sheetAt(SheetContent::blank, a5, middle, 3)},
        {"a receipt", bedOf(20), sheetAt(SheetContent::receipt, {58, 140}, {60, 100}, -7)},
        {"a narrow strip", bedOf(128), sheetAt(SheetContent::blank, {170, 22}, middle, 5)},
        {"a photograph", bedOf(240), sheetAt(SheetContent::darkPhoto, {152, 102}, middle, -2)},
        {"in a corner of the bed", bedOf(20), sheetAt(SheetContent::text, a5, {74, 105}, 0)},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const auto scene = corpus::renderBed(c.bed, {c.sheet}, 3);
        for (const QImage &image :
             {scene.image, scene.image.convertToFormat(QImage::Format_Grayscale8)}) {
            const auto page = findPage(image);
            ASSERT_TRUE(page);
            EXPECT_TRUE(page->hasStraightEdges);
            EXPECT_NEAR(page->angle, c.sheet.angle, 0.1);
            for (int i = 0; i < 4; ++i) {
                const QPointF off = page->corners()[i] - scene.papers[0][i];
                EXPECT_LT(std::hypot(off.x(), off.y()) / pixelsPerMm, 1.0) << "corner " << i;
            }
            EXPECT_LT(contentCut(*page, scene), 0.5);
        }
    }
}

TEST(PageOutline, IsNotGivenWhereTheBedDoesNotTell)
{
    const QSizeF a5(148, 210);
    const QPointF middle(108, 148);
    const auto table = [&](QSizeF size) {
        return sheetAt(SheetContent::table, size, middle, 0, qRgb(247, 247, 247));
    };
    const struct {
        const char *what;
        Bed bed;
        std::vector<PlacedSheet> sheets;
    } cases[] = {
        {"no lid in sight",                       bedOf(20),  {sheetAt(SheetContent::text, {230, 310}, middle, 0)}},
        {"a frame on a page as large as the bed", bedOf(247), {table({216, 297})}                                 },
        {"no edge between paper and lid",         bedOf(247), {table(a5)}                                         },
        {"text without an edge around it",
         bedOf(246),
         {sheetAt(SheetContent::text, a5, middle, 2, qRgb(246, 246, 246))}                                        },
        {"an empty bed",                          bedOf(128), {}                                                  },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QImage image = corpus::renderBed(c.bed, c.sheets, 3).image;
        EXPECT_FALSE(findPage(image));
        EXPECT_EQ(straightened(image, switchesFor(true, false)), image);
    }
}

TEST(PageOutline, HoldsAllSheets)
{
    const auto scene =
        corpus::renderBed(bedOf(20),
                          {sheetAt(SheetContent::text, {90, 60}, {60, 50}, 8),
                           sheetAt(SheetContent::fewLines, {100, 70}, {140, 210}, -5)},
                          3);
    const auto page = findPage(scene.image);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->sheets, 2);
    EXPECT_LT(contentCut(*page, scene), 0.5);
    EXPECT_LT(page->size.height(), scene.image.height() * 0.9);
    EXPECT_FALSE(pageSkew(scene.image, page));
}

TEST(PageOutline, IsGivenWhenThereIsButOneAnswer)
{
    // The angle and place at which a general intersection of this outline with itself is empty.
    EXPECT_TRUE(findPage(corpus::sceneCase(3, 66, 150).scene.image));
}

TEST(PageOutline, CutsNoContentOfTheCorpus)
{
    for (int i = 0; i < 20; ++i) {
        const auto made = corpus::sceneCase(11, i, dpi);
        SCOPED_TRACE(made.name.toStdString());
        const auto page = findPage(made.scene.image);
        if (page) {
            EXPECT_LT(contentCut(*page, made.scene), 0.6);
        }
    }
}

TEST(Skew, IsReadFromLinesToATenthOfADegree)
{
    const SheetContent contents[] = {SheetContent::text, SheetContent::table};
    for (const SheetContent content : contents) {
        for (const double angle : {-14.0, -2.37, -0.3, 0.0, 0.62, 9.81}) {
            SCOPED_TRACE(testing::Message() << int(content) << " at " << angle);
            // No edges: paper and lid are one.
            const auto scene = corpus::renderBed(
                bedOf(246), {sheetAt(content, {170, 220}, {108, 148}, angle, qRgb(246, 246, 246))},
                3);
            const auto skew = textSkew(scene.image);
            ASSERT_TRUE(skew);
            EXPECT_NEAR(skew->angle, angle, 0.1);
        }
    }
}

TEST(Skew, NeedsEvidence)
{
    for (const SheetContent content :
         {SheetContent::blank, SheetContent::photo, SheetContent::darkPhoto, SheetContent::drawing,
          SheetContent::slopes}) {
        SCOPED_TRACE(int(content));
        const auto scene =
            corpus::renderBed(bedOf(246), {sheetAt(content, {230, 310}, {108, 148}, 3)}, 3);
        EXPECT_FALSE(textSkew(scene.image));
        EXPECT_EQ(straightened(scene.image, switchesFor(false, true)), scene.image);
    }
}

TEST(Straighten, EachSwitchDoesOneThing)
{
    const auto scene =
        corpus::renderBed(bedOf(20), {sheetAt(SheetContent::text, {148, 210}, {108, 148}, 4)}, 3);
    const QImage &bed = scene.image;
    const QSizeF paper = QSizeF(148, 210) * pixelsPerMm;

    EXPECT_EQ(straightened(bed, switchesFor(false, false)), bed);

    const QImage cropped = straightened(bed, switchesFor(true, false));
    const QRect box = scene.papers[0].boundingRect().toRect();
    EXPECT_NEAR(cropped.width(), box.width(), 5);
    EXPECT_NEAR(cropped.height(), box.height(), 5);
    const auto page = findPage(bed);
    ASSERT_TRUE(page);
    EXPECT_EQ(cropped, bed.copy(page->corners().boundingRect().toAlignedRect()))
        << "pixels are as scanned";

    const QImage turned = straightened(bed, switchesFor(false, true));
    EXPECT_GT(turned.width(), bed.width());
    EXPECT_LT(qGray(turned.pixel(1, 1)), 40) << "filled like the lid beside";

    const QImage both = straightened(bed, switchesFor(true, true));
    EXPECT_NEAR(both.width(), paper.width(), 4);
    EXPECT_NEAR(both.height(), paper.height(), 4);
    const auto left = textSkew(both);
    ASSERT_TRUE(left);
    EXPECT_NEAR(left->angle, 0, 0.1);
    EXPECT_EQ(both.dotsPerMeterX(), bed.dotsPerMeterX());
    for (const QPoint corner : {QPoint(3, 3), QPoint(both.width() - 4, both.height() - 4)})
        EXPECT_GT(qGray(both.pixel(corner)), 200) << "no wedge of the lid";
}

TEST(Straighten, PaperPastTheBedIsFilledWithPaper)
{
    const auto scene =
        corpus::renderBed(bedOf(20), {sheetAt(SheetContent::text, {148, 210}, {72, 104}, 3)}, 3);
    const QImage page = straightened(scene.image, switchesFor(true, true));
    ASSERT_LT(page.width(), scene.image.width() * 0.8);
    for (const QPoint corner :
         {QPoint(2, 2), QPoint(page.width() - 3, 2), QPoint(2, page.height() - 3),
          QPoint(page.width() - 3, page.height() - 3)})
        EXPECT_GT(qGray(page.pixel(corner)), 200) << corner.x() << "," << corner.y();
}

TEST(Straighten, AFixedLengthIsLaidOnThePaper)
{
    const auto scene =
        corpus::renderBed(bedOf(20), {sheetAt(SheetContent::text, {148, 210}, {108, 148}, 0)}, 3);
    AutoSwitches switches = switchesFor(true, false);
    switches.cropFixedWidthMm = 100;
    const QImage narrow = straightened(scene.image, switches);
    EXPECT_NEAR(narrow.width() / pixelsPerMm, 100, 0.6);
    EXPECT_NEAR(narrow.height() / pixelsPerMm, 210, 1);
    switches.cropWidthMode = QStringLiteral("auto");
    EXPECT_NEAR(straightened(scene.image, switches).width() / pixelsPerMm, 148, 1);
    for (const double nonsense : {0.0, -5.0, std::nan(""), 1e9}) {
        switches.cropWidthMode.reset();
        switches.cropFixedWidthMm = nonsense;
        EXPECT_NEAR(straightened(scene.image, switches).width() / pixelsPerMm, 148, 1);
    }
}

TEST(Straighten, OddImagesComeOutUnharmed)
{
    for (const QSize size : {QSize(1, 1), QSize(1, 900), QSize(900, 1), QSize(20'000, 30),
                             QSize(30, 20'000), QSize(600, 800)}) {
        for (const int level : {0, 128, 255}) {
            SCOPED_TRACE(testing::Message()
                         << size.width() << "x" << size.height() << " " << level);
            const QImage grey = greyPage(size, level, 300);
            EXPECT_EQ(straightened(grey, switchesFor(true, true)), grey);
            const QImage color = grey.convertToFormat(QImage::Format_RGB32);
            EXPECT_EQ(straightened(color, switchesFor(true, true)), color);
        }
    }
}

TEST(Turn, KeepsFineLinesSharp)
{
    // A grating of 8 pixels, laid at an angle and turned back, against one drawn upright.
    const double angle = 2.3 * 3.14159265358979 / 180;
    const auto grating = [](double u) {
        return 128 + 100 * std::sin(u * 3.14159265358979 / 4);
    };
    QImage grey(300, 300, QImage::Format_Grayscale8);
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 300; ++x)
            grey.scanLine(y)[x] = uchar(std::lround(
                grating((x - 149.5) * std::cos(angle) + (y - 149.5) * std::sin(angle))));
    }
    for (const QImage &image : {grey, grey.convertToFormat(QImage::Format_RGB32)}) {
        const QImage upright = turnedWindow(image, {
                                                       {150, 150},
                                                       {200, 200},
                                                       2.3
        });
        ASSERT_EQ(upright.format(), image.format());
        double most = 0;
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 200; ++x)
                most = std::max(most, std::abs(qGray(upright.pixel(x, y)) - grating(x - 99.5)));
        }
        EXPECT_LT(most, 6);
    }
}

TEST(Turn, LeavesAPlainSurfacePlain)
{
    for (const int level : {0, 200, 255}) {
        const QImage page = greyPage({90, 70}, level, 300);
        const QImage turned = turnedWindow(page, {
                                                     {45,  35 },
                                                     {120, 110},
                                                     -11
        });
        EXPECT_EQ(turned, greyPage({120, 110}, level, 300));
    }
}

} // namespace
} // namespace scanengine
