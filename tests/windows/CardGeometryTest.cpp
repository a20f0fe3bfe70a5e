#include "windows/CardGeometry.h"

#include "windows/WindowShape.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

constexpr QRect card(100, 200, 400, 300); // To 500, 500.

TEST(CardGeometry, ThePointerHoldsTheEdgesItIsNear)
{
    constexpr EdgeGrip grip{6, 3};
    const struct {
        const char *what;
        QPoint point;
        Qt::Edges edges;
        Qt::CursorShape cursor;
    } cases[] = {
        {"the middle",              {300, 350}, {},                             Qt::ArrowCursor    },
        {"just inside the grip",    {103, 350}, {},                             Qt::ArrowCursor    },
        {"the left edge, inside",   {102, 350}, Qt::LeftEdge,                   Qt::SizeHorCursor  },
        {"the left edge, outside",  {94, 350},  Qt::LeftEdge,                   Qt::SizeHorCursor  },
        {"beyond the grip",         {93, 350},  {},                             Qt::ArrowCursor    },
        {"the right edge, inside",  {497, 350}, Qt::RightEdge,                  Qt::SizeHorCursor  },
        {"the right edge, outside", {505, 350}, Qt::RightEdge,                  Qt::SizeHorCursor  },
        {"beyond the right grip",   {506, 350}, {},                             Qt::ArrowCursor    },
        {"the top edge",            {300, 194}, Qt::TopEdge,                    Qt::SizeVerCursor  },
        {"the bottom edge",         {300, 499}, Qt::BottomEdge,                 Qt::SizeVerCursor  },
        {"top left",                {95, 195},  Qt::TopEdge | Qt::LeftEdge,     Qt::SizeFDiagCursor},
        {"bottom right",            {503, 503}, Qt::BottomEdge | Qt::RightEdge, Qt::SizeFDiagCursor},
        {"top right",               {503, 195}, Qt::TopEdge | Qt::RightEdge,    Qt::SizeBDiagCursor},
        {"bottom left",             {95, 503},  Qt::BottomEdge | Qt::LeftEdge,  Qt::SizeBDiagCursor},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(edgesAt(c.point, card, grip), c.edges);
        EXPECT_EQ(cursorFor(c.edges), c.cursor);
    }
}

TEST(CardGeometry, AnEdgeIsDraggedAndTheOppositeOneStays)
{
    constexpr QSize smallest(150, 120);
    const struct {
        const char *what;
        Qt::Edges edges;
        QPoint way;
        QRect expected;
    } cases[] = {
        {"right edge outwards",     Qt::RightEdge,              {50, 70},  {100, 200, 450, 300}},
        {"left edge outwards",      Qt::LeftEdge,               {-50, 70}, {50, 200, 450, 300} },
        {"bottom edge inwards",     Qt::BottomEdge,             {50, -70}, {100, 200, 400, 230}},
        {"top left corner inwards", Qt::TopEdge | Qt::LeftEdge, {10, 20},  {110, 220, 390, 280}},
        {"right edge too far",      Qt::RightEdge,              {-900, 0}, {100, 200, 150, 300}},
        {"left edge too far",       Qt::LeftEdge,               {900, 0},  {350, 200, 150, 300}},
        {"top edge too far",        Qt::TopEdge,                {0, 900},  {100, 380, 400, 120}},
        {"bottom right too far",
         Qt::BottomEdge | Qt::RightEdge,
         {-900, -900},
         {100, 200, 150, 120}                                                                  },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(resized(card, c.edges, c.way, smallest), c.expected);
    }
}

TEST(CardGeometry, SizesChangeByWholePixels)
{
    EXPECT_EQ(wholePixelStep(1), 1);
    EXPECT_EQ(wholePixelStep(1.25), 4);
    EXPECT_EQ(wholePixelStep(4 / 3.0), 3);
    EXPECT_EQ(wholePixelStep(1.5), 2);
    EXPECT_EQ(wholePixelStep(1.1), 1) << "ten are too coarse";
}

TEST(CardGeometry, RoundedRowsCoverTheCardButItsCorners)
{
    const QRect box(3, 5, 60, 50);
    constexpr double radius = 22;
    QRegion region;
    int below = box.top();
    for (const QRect &row : roundedRows(box, radius)) {
        EXPECT_EQ(row.top(), below); // Rows come from the top and leave nothing out.
        below = row.bottom() + 1;
        region += row;
    }
    EXPECT_EQ(below, box.bottom() + 1);
    EXPECT_EQ(region.boundingRect(), box);
    const auto outside = [&](const QPoint &pixel) {
        const QPointF middle = QPointF(pixel) + QPointF(0.5, 0.5);
        const QRectF inner = QRectF(box).adjusted(radius, radius, -radius, -radius);
        const QPointF nearest(std::clamp(middle.x(), inner.left(), inner.right()),
                              std::clamp(middle.y(), inner.top(), inner.bottom()));
        return std::hypot(middle.x() - nearest.x(), middle.y() - nearest.y()) - radius;
    };
    for (int y = box.top(); y <= box.bottom(); ++y) {
        for (int x = box.left(); x <= box.right(); ++x) {
            const double distance = outside({x, y});
            if (distance < -0.75) {
                EXPECT_TRUE(region.contains(QPoint(x, y))) << x << ',' << y;
            }
            if (distance > 0.75) {
                EXPECT_FALSE(region.contains(QPoint(x, y))) << x << ',' << y;
            }
        }
    }
}

TEST(CardGeometry, RowsOfUnusualRadiiStillCoverTheCard)
{
    const struct {
        const char *what;
        QRect box;
        double radius;
        int area; ///< Pixels.
    } cases[] = {
        {"square corners",       {0, 0, 20, 10}, 0,   200},
        {"half a pixel",         {0, 0, 20, 10}, 0.4, 200},
        {"one pixel",            {0, 0, 1, 1},   22,  1  },
        {"larger than the card", {0, 0, 4, 4},   22,  12 },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        int area = 0;
        for (const QRect &row : roundedRows(c.box, c.radius)) {
            EXPECT_TRUE(c.box.contains(row));
            area += row.width() * row.height();
        }
        EXPECT_EQ(area, c.area);
    }
}

} // namespace
} // namespace velmor
