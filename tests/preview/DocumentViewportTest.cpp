#include "preview/DocumentViewport.h"

#include "preview/PictureRequest.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const PageSheet portrait{
    {0, 0, 200, 300},
    0
};

DocumentViewport viewportOf(const QList<PageSheet> &pages, QSizeF view, double scale = 1)
{
    DocumentViewport viewport;
    viewport.setViewSize(view);
    viewport.setPages(pages);
    viewport.setScale(scale, {0, 0});
    return viewport;
}

TEST(PageSheet, PlacesBecomeThoseOfPageSpaceForEachRotation)
{
    // A place near the top left of the page as shown, and the far corner.
    const struct {
        int rotation;
        QSizeF shown;
        QPointF place, origin;
    } cases[] = {
        {0,   {200, 300}, {110, 300}, {100, 320}},
        {90,  {300, 200}, {120, 30},  {100, 20} },
        {180, {200, 300}, {290, 40},  {300, 20} },
        {270, {300, 200}, {280, 310}, {300, 320}},
        {450, {300, 200}, {120, 30},  {100, 20} },
        {-90, {300, 200}, {280, 310}, {300, 320}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.rotation);
        const PageSheet sheet{
            {100, 20, 200, 300},
            c.rotation
        };
        EXPECT_EQ(sheet.size(), c.shown);
        EXPECT_EQ(sheet.toPageSpace().map(QPointF(10, 20)), c.place);
        EXPECT_EQ(sheet.toPageSpace().map(QPointF(0, 0)), c.origin);
    }
}

TEST(DocumentViewport, FitsTheWidestPage)
{
    const struct {
        const char *what;
        QList<PageSheet> pages;
        QSizeF view;
        double fit;
    } cases[] = {
        {"one page",       {portrait},                         {400, 100}, 2},
        {"a page on side", {portrait, {{0, 0, 200, 300}, 90}}, {600, 100}, 2},
        {"cropped",        {{{50, 50, 100, 100}, 0}},          {400, 100}, 4},
        {"no page",        {},                                 {400, 100}, 0},
        {"no view",        {portrait},                         {0, 0},     0},
    };
    for (const auto &c : cases)
        EXPECT_DOUBLE_EQ(viewportOf(c.pages, c.view).fitScale(), c.fit) << c.what;
}

TEST(DocumentViewport, ScaleHasLimitsAndKeepsItsPoint)
{
    const QList<PageSheet> pages(5, portrait);
    const struct {
        const char *what;
        double from, to;
        QPointF fixed;
        double scale;
    } cases[] = {
        {"in",        2, 3,    {120, 70}, 3   },
        {"out",       3, 2.5,  {10, 190}, 2.5 },
        {"too large", 5, 1000, {100, 50}, 20  },
        {"too small", 1, 1e-6, {100, 50}, 0.05},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        DocumentViewport viewport = viewportOf(pages, {200, 200}, c.from);
        viewport.scrollTo({20, 700});
        const auto before = viewport.placeAt(c.fixed);
        viewport.setScale(c.to, c.fixed);
        EXPECT_DOUBLE_EQ(viewport.scale(), c.scale);
        if (c.scale > 1) {
            const auto after = viewport.placeAt(c.fixed);
            EXPECT_EQ(after->page, before->page);
            EXPECT_NEAR(after->point.x(), before->point.x(), 1e-9);
            EXPECT_NEAR(after->point.y(), before->point.y(), 1e-9);
        }
    }
}

TEST(DocumentViewport, ScrollsWithinTheColumnAndCentresASmallOne)
{
    const struct {
        const char *what;
        double scale;
        QPointF to;
        QRectF visible;
    } cases[] = {
        {"inside",         2,   {30, 100},   {30, 100, 100, 100}     },
        {"before the top", 2,   {-5, -9},    {0, 0, 100, 100}        },
        {"past the end",   2,   {900, 9000}, {100, 508, 100, 100}    },
        {"narrower",       0.5, {50, 60},    {-100, 60, 400, 400}    },
        {"smaller",        0.2, {50, 60},    {-400, -196, 1000, 1000}},
    };
    for (const auto &c : cases) {
        DocumentViewport viewport = viewportOf({portrait, portrait}, {200, 200}, c.scale);
        viewport.scrollTo(c.to);
        EXPECT_EQ(viewport.visible(), c.visible) << c.what;
    }
}

TEST(DocumentViewport, TheCurrentPageTakesMostOfTheView)
{
    const struct {
        const char *what;
        double top;
        QList<int> visible;
        int current;
    } cases[] = {
        {"at the top",        0,   {0},    0},
        {"mostly the first",  180, {0, 1}, 0},
        {"mostly the second", 220, {0, 1}, 1},
        {"halves",            204, {0, 1}, 0},
        {"from the gap on",   301, {1},    1},
        {"the end",           999, {2},    2},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        DocumentViewport viewport = viewportOf({portrait, portrait, portrait}, {200, 200});
        viewport.scrollTo({0, c.top});
        EXPECT_EQ(viewport.visiblePages(), c.visible);
        EXPECT_EQ(viewport.currentPage(), c.current);
    }
    EXPECT_FALSE(viewportOf({}, {200, 200}).currentPage());
    EXPECT_EQ(viewportOf(QList<PageSheet>(4, portrait), {50, 700}).currentPage(), 0);
}

TEST(DocumentViewport, APointIsOnTheNearestPage)
{
    const struct {
        const char *what;
        QPointF point;
        int page;
        QPointF place;
    } cases[] = {
        {"on a page",       {150, 10},  0, {100, 10} },
        {"left of it",      {5, 10},    0, {0, 10}   },
        {"upper gap",       {150, 303}, 0, {100, 300}},
        {"lower gap",       {150, 306}, 1, {150, 0}  },
        {"on a wider page", {5, 330},   1, {5, 22}   },
    };
    const PageSheet wide{
        {0, 0, 300, 300},
        0
    };
    const DocumentViewport viewport = viewportOf({portrait, wide, portrait}, {300, 400});
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(viewport.placeAt(c.point)->page, c.page);
        EXPECT_EQ(viewport.placeAt(c.point)->point, c.place);
    }
    EXPECT_FALSE(viewportOf({}, {300, 400}).placeAt({1, 1}));
}

TEST(DocumentViewport, RevealsWithAsLittleMovementAsPossible)
{
    const struct {
        const char *what;
        QRectF box;
        QPointF topLeft;
    } cases[] = {
        {"in view",          {20, 120, 30, 10},  {0, 100}  },
        {"below",            {20, 250, 30, 10},  {0, 185}  },
        {"above",            {20, 60, 30, 10},   {0, 35}   },
        {"right",            {180, 120, 20, 10}, {100, 100}},
        {"taller than view", {20, 0, 30, 300},   {0, 100}  },
    };
    for (const auto &c : cases) {
        DocumentViewport viewport = viewportOf({portrait, portrait}, {100, 100});
        viewport.scrollTo({0, 100});
        viewport.reveal(0, c.box);
        EXPECT_EQ(viewport.visible().topLeft(), c.topLeft) << c.what;
    }
}

TEST(DocumentViewport, HandsTheEditorPageZoomAndMiddle)
{
    const auto fitted = [](const QList<PageSheet> &pages, double zoom, QPointF topLeft) {
        DocumentViewport viewport = viewportOf(pages, {200, 200});
        viewport.setScale(viewport.fitScale() * zoom, {0, 0});
        viewport.scrollTo(topLeft);
        return viewport.editorViewport();
    };
    const PageSheet cropped{
        {50, 20, 200, 300},
        0
    };
    const PageSheet turned{
        {50, 20, 300, 200},
        90
    };
    const PageSheet small{
        {0, 0, 200, 100},
        0
    };
    const PageSheet emptyCrop{
        {0, 0, 0, 0},
        0
    };
    const struct {
        const char *what;
        EditorViewport viewport, expected;
    } cases[] = {
        {"fitted, at the top", fitted({portrait},           1,   {0, 0}),     {0, 1, QPointF(0.5, 1 / 3.0)}    },
        {"zoomed in",          fitted({portrait},           4,   {150, 225}), {0, 4, QPointF(0.875, 0.8333333)}},
        {"zoomed out",         fitted({portrait},           0.5, {0, 0}),     {0, 1, QPointF(0.5, 0.5)}        },
        {"second page",        fitted({portrait, portrait}, 1,   {0, 408}),   {1, 1, QPointF(0.5, 2 / 3.0)}    },
        {"cropped",            fitted({cropped},            4,   {0, 0}),     {0, 4, QPointF(0.125, 0.0833333)}},
        // Fractions of the crop box as it lies in the file, not as shown.
        {"turned",             fitted({turned},             4,   {0, 0}),     {0, 4, QPointF(0.0833333, 0.875)}},
        {"more than the page", fitted({small},              1,   {0, 0}),     {0, 1, QPointF(0.5, 0.5)}        },
        {"beyond a low page",  fitted({small, small},       1,   {0, 8}),     {1, 1, QPointF(0.5, 0)}          },
        {"no page",            fitted({},                   1,   {0, 0}),     {0, 1, std::nullopt}             },
        {"empty crop box",     fitted({emptyCrop},          1,   {0, 0}),     {0, 1, std::nullopt}             },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(c.viewport.pageIndex, c.expected.pageIndex);
        EXPECT_DOUBLE_EQ(c.viewport.zoom, c.expected.zoom);
        ASSERT_EQ(c.viewport.center.has_value(), c.expected.center.has_value());
        if (c.expected.center) {
            EXPECT_NEAR(c.viewport.center->x(), c.expected.center->x(), 1e-6);
            EXPECT_NEAR(c.viewport.center->y(), c.expected.center->y(), 1e-6);
        }
    }
}

TEST(NeededPictures, AreSharpWhereTheViewIsAndNeverLarge)
{
    const QList<PageSheet> pages(500, PageSheet{
                                          {0, 0, 595, 842},
                                          0
    });
    for (const double ratio : {1.0, 1.5, 2.0}) {
        for (const double scale : {0.05, 0.3, 1.0, 4.0, 20.0}) {
            SCOPED_TRACE(testing::Message() << "scale " << scale << ", ratio " << ratio);
            DocumentViewport viewport = viewportOf(pages, {600, 700}, scale);
            viewport.scrollTo({200, 100'000});
            const auto needed = neededPictures(viewport, ratio);
            const int current = viewport.currentPage().value();
            const QSize exact = (QSizeF(595, 842) * scale * ratio).toSize();
            bool isSharp = false;
            for (const PictureRequest &request : needed) {
                EXPECT_LE(request.pixels.width() * request.pixels.height(), 5'000'000);
                EXPECT_TRUE(QRect(QPoint(0, 0), request.pagePixels).contains(request.pixels));
                isSharp |= request.page == current && request.pagePixels == exact;
            }
            EXPECT_TRUE(isSharp);
            EXPECT_EQ(needed.first().page, viewport.visiblePages().first());
        }
    }
    EXPECT_THAT(neededPictures(viewportOf({}, {600, 700}), 1), IsEmpty());
}

TEST(NeededPictures, APartServesUntilItsMarginIsUsedUp)
{
    const auto partAt = [](QPointF topLeft, double scale) {
        DocumentViewport viewport = viewportOf(
            {
                {{0, 0, 600, 800}, 0}
        },
            {400, 400}, scale);
        viewport.scrollTo(topLeft);
        for (const PictureRequest &request : neededPictures(viewport, 1)) {
            if (request.extent == PictureExtent::part)
                return request;
        }
        return PictureRequest();
    };
    const PictureRequest made = partAt({200, 200}, 8);
    EXPECT_TRUE(made.serves(partAt({210, 190}, 8)));
    EXPECT_FALSE(made.serves(partAt({230, 200}, 8)));
    EXPECT_FALSE(made.serves(partAt({200, 200}, 8.1)));
}

} // namespace
} // namespace velmor
