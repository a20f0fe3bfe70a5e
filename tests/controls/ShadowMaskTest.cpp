#include "controls/ShadowMask.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace velmor;

namespace {

int alphaAt(const QImage &image, int x, int y)
{
    return qAlpha(image.pixel(x, y));
}

/// Part of a Gaussian's height that a half plane covers at a distance outside of its edge.
double halfPlane(double distance, double sigma)
{
    return 0.5 * std::erfc(distance / (sigma * std::sqrt(2.0)));
}

TEST(ShadowMask, FallsOffLikeAGaussianOnEverySide)
{
    for (const double sigma : {1.0, 4.0, 18.0, 57.0}) {
        SCOPED_TRACE(sigma);
        const int reach = shadowReach(sigma);
        const QSize box(8 * reach, 8 * reach);
        const QImage mask = shadowMask({box, 0}, sigma, QColor(0, 0, 0, 200));
        ASSERT_EQ(mask.size(), box + QSize(2 * reach, 2 * reach));
        const int middle = mask.width() / 2;
        EXPECT_EQ(alphaAt(mask, middle, middle), 200);
        for (int i = 0; i < 2 * reach; ++i) {
            const double expected = 200 * halfPlane(reach - i - 0.5, sigma);
            const int last = mask.width() - 1 - i;
            EXPECT_NEAR(alphaAt(mask, i, middle), expected, 2);
            EXPECT_NEAR(alphaAt(mask, middle, i), expected, 2);
            EXPECT_NEAR(alphaAt(mask, last, middle), expected, 2);
            EXPECT_NEAR(alphaAt(mask, middle, last), expected, 2);
        }
    }
}

TEST(ShadowMask, OfADiscIsTheSameInEveryDirection)
{
    const QImage mask = shadowMask({QSizeF(84, 84), 42}, 16, QColor(0, 0, 0));
    const double middle = mask.width() / 2.0;
    for (const double distance : {20.0, 42.0, 60.0, 75.0}) {
        SCOPED_TRACE(distance);
        const int along = alphaAt(mask, int(middle + distance), int(middle));
        for (const double degrees : {30.0, 45.0, 60.0, 90.0, 135.0, 270.0}) {
            const double a = degrees * 3.14159265 / 180;
            EXPECT_NEAR(alphaAt(mask, int(middle + distance * std::cos(a)),
                                int(middle + distance * std::sin(a))),
                        along, 8);
        }
    }
}

TEST(ShadowMask, TakesItsColourWithoutATint)
{
    const QImage mask = shadowMask({QSizeF(200, 200), 22}, 10, QColor(80, 60, 160, 128));
    const QColor pixel = mask.pixelColor(mask.width() / 2, mask.height() / 2);
    EXPECT_NEAR(pixel.red(), 80, 2);
    EXPECT_NEAR(pixel.green(), 60, 2);
    EXPECT_NEAR(pixel.blue(), 160, 2);
    EXPECT_EQ(pixel.alpha(), 128);
}

TEST(ShadowMask, CutsTheBoxOutWhereItLies)
{
    QImage mask = shadowMask({QSizeF(100, 100), 0}, 10, Qt::black);
    const int reach = shadowReach(10);
    cutOut(mask, {QSizeF(100, 100), 20}, {0, -6});
    const int left = reach;
    const int top = reach - 6;
    EXPECT_EQ(alphaAt(mask, left + 50, top), 0);
    EXPECT_EQ(alphaAt(mask, left + 50, top + 99), 0);
    EXPECT_GT(alphaAt(mask, left + 50, top - 1), 40);
    EXPECT_GT(alphaAt(mask, left + 50, top + 100), 100);
    EXPECT_GT(alphaAt(mask, left + 1, top + 1), 20) << "the rounded corner stays";
    EXPECT_EQ(alphaAt(mask, left + 7, top + 7), 0);
}

} // namespace
