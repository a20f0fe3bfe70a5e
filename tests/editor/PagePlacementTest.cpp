#include "editor/PagePlacement.h"

#include "tests/Printers.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

/// A page of 200x400 pixels in an area of 300x200 points: it is fitted to 100x200.
PagePlacement tallPage(double zoom = 1, QPointF pan = {})
{
    return {
        .image = {200, 400},
          .viewSize = {300, 200},
          .zoom = zoom, .pan = pan
    };
}

TEST(PagePlacement, CentresWhatFitsAndLeavesNoGapBesideTheRest)
{
    const struct {
        const char *what;
        double zoom;
        QPointF pan;
        QRectF rect;
    } cases[] = {
        {"fitted",                            1, {},          {100, 0, 100, 200}    },
        {"a pan doesn't move a fitted page",  1, {50, 50},    {100, 0, 100, 200}    },
        {"narrower than the area",            2, {50, 0},     {50, -100, 200, 400}  },
        {"too far down for the area",         2, {0, 1000},   {50, 0, 200, 400}     },
        {"too far up",                        2, {0, -1000},  {50, -200, 200, 400}  },
        {"larger on both axes",               4, {-20, 30},   {-70, -270, 400, 800} },
        {"left edge at the area's, at most",  4, {80, 0},     {0, -300, 400, 800}   },
        {"right edge at the area's, at most", 4, {-80, -400}, {-100, -600, 400, 800}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(tallPage(c.zoom, c.pan).imageRect(), c.rect) << c.what;
}

TEST(PagePlacement, HasNoRectangleWithoutAnImageOrAnArea)
{
    EXPECT_EQ(fittedRect({0, 0}, {300, 200}), QRectF());
    EXPECT_EQ(fittedRect({200, 400}, {0, 200}), QRectF());
    const PagePlacement unknown{
        .image = {200, 400},
          .viewSize = {0, 0},
          .zoom = 2, .pan = {}
    };
    EXPECT_EQ(unknown.clampedPan({5, 7}), QPointF(5, 7));
    PagePlacement blank{
        .image = {},
          .viewSize = {300, 200},
          .zoom = 1, .pan = {}
    };
    blank.applyZoom(2, {0, 0});
    EXPECT_EQ(blank.zoom, 1);
}

TEST(PagePlacement, ZoomKeepsThePlaceUnderTheAnchor)
{
    PagePlacement page = tallPage(4, {20, -40});
    const QPointF anchor(180, 60);
    const auto placeAtAnchor = [&] {
        const QRectF rect = page.imageRect();
        return QPointF((anchor.x() - rect.left()) / rect.width(),
                       (anchor.y() - rect.top()) / rect.height());
    };
    const QPointF before = placeAtAnchor();
    page.applyZoom(1.4, anchor);
    EXPECT_DOUBLE_EQ(page.zoom, 5.6);
    EXPECT_NEAR(placeAtAnchor().x(), before.x(), 1e-12);
    EXPECT_NEAR(placeAtAnchor().y(), before.y(), 1e-12);

    page.applyZoom(100, anchor);
    EXPECT_EQ(page.zoom, 8);
    page.applyZoom(0.001, anchor);
    EXPECT_EQ(page, tallPage()) << "a fitted page is centred";
}

TEST(PagePlacement, PansWithinThePageAndOnlyWhenZoomedIn)
{
    PagePlacement page = tallPage();
    page.applyPan({10, 10});
    EXPECT_EQ(page.pan, QPointF());
    page.zoom = 4;
    page.applyPan({10, -20});
    page.applyPan({10, -20});
    EXPECT_EQ(page.pan, QPointF(20, -40));
    page.applyPan({1000, -1000});
    EXPECT_EQ(page.pan, QPointF(50, -300));
}

TEST(PagePlacement, OpensWhereAViewportSays)
{
    const struct {
        const char *what;
        EditorViewport viewport;
        double zoom;
        QPointF pan;
    } cases[] = {
        {"beyond the limit",           {0, 20, QPointF(0.5, 0.5)}, 8, {0, 0}     },
        {"below it, without a centre", {0, 0.5, QPointF(0, 0)},    1, {0, 0}     },
        {"no centre",                  {0, 4, std::nullopt},       4, {0, 0}     },
        {"a little right and below",   {0, 4, QPointF(0.6, 0.7)},  4, {-40, -160}},
        {"far outside the page",       {0, 4, QPointF(-9, 9)},     4, {50, -300} },
    };
    for (const auto &c : cases) {
        PagePlacement page = tallPage(3, {1, 2});
        page.applyViewport(c.viewport);
        EXPECT_EQ(page.zoom, c.zoom) << c.what;
        EXPECT_NEAR(page.pan.x(), c.pan.x(), 1e-9) << c.what;
        EXPECT_NEAR(page.pan.y(), c.pan.y(), 1e-9) << c.what;
    }
}

} // namespace
} // namespace velmor
