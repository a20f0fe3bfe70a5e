#include "editor/Loupe.h"

#include "tests/Printers.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

constexpr QSize image(1000, 800);
const QRectF rect(10, 20, 500, 400); // Half a point for a pixel.
constexpr QSizeF area(1000, 800);

TEST(Loupe, MarksTheVeryPixelThatIsMeasured)
{
    const struct {
        const char *what;
        QPointF pointer;
        QPoint pixel, cell;
    } cases[] = {
        {"in the middle of a pixel", {260.25, 220.25}, {500, 400}, {10, 10}},
        {"at a pixel's edge",        {260.5, 220.49},  {501, 400}, {10, 10}},
        {"at the top left corner",   {10, 20},         {0, 0},     {0, 0}  },
        {"at the lower right one",   {510, 420},       {999, 799}, {20, 20}},
        {"near the left edge",       {14.75, 220.25},  {9, 400},   {9, 10} },
        {"where the grid stops",     {505.3, 220.25},  {990, 400}, {11, 10}},
    };
    for (const auto &c : cases) {
        const auto loupe = loupeAt(c.pointer, rect, image, area);
        ASSERT_TRUE(loupe) << c.what;
        EXPECT_EQ(loupe->pixel, c.pixel) << c.what;
        EXPECT_EQ(loupe->source, QRect(c.pixel - c.cell, QSize(21, 21))) << c.what;
        EXPECT_TRUE(QRect(QPoint(), image).contains(loupe->source)) << c.what;
        EXPECT_EQ(loupe->marked, QRectF(c.cell.x() * 6, c.cell.y() * 6, 6, 6)) << c.what;
    }
    EXPECT_FALSE(loupeAt({9.9, 220}, rect, image, area));
    EXPECT_FALSE(loupeAt({260, 420.1}, rect, image, area));
}

TEST(Loupe, ServesAnImageSmallerThanTheLens)
{
    for (const double x : {10.0, 260.0, 510.0}) {
        const auto loupe = loupeAt({x, 220}, rect, {3, 1}, area);
        ASSERT_TRUE(loupe);
        EXPECT_EQ(loupe->pixel, QPoint(x < 100 ? 0 : x < 400 ? 1 : 2, 0));
        EXPECT_EQ(loupe->marked.topLeft() / 6 + loupe->source.topLeft(), QPointF(loupe->pixel));
    }
}

TEST(Loupe, StandsRightAboveThePointerAndTurnsAtTheEdges)
{
    const struct {
        const char *what;
        QPointF pointer, middle;
    } cases[] = {
        {"far from the edges",       {400, 400}, {491, 309}},
        {"just room on the right",   {846, 400}, {937, 309}},
        {"none",                     {847, 400}, {756, 309}},
        {"just room above",          {400, 168}, {491, 77} },
        {"none",                     {400, 167}, {491, 258}},
        {"near the top right",       {990, 10},  {899, 101}},
        {"no further test below it", {400, 790}, {491, 699}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(loupePosition(c.pointer, area, 126), c.middle) << c.what;
}

TEST(Loupe, TellsTheLuminanceInWholePercent)
{
    EXPECT_EQ(loupeLabel(0.125), u"13%");
    EXPECT_EQ(loupeLabel(1), u"100%");
}

} // namespace
} // namespace velmor
