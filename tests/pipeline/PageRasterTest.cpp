#include "pipeline/PageRaster.h"

#include "tests/pipeline/TestPages.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velmor {
namespace {

TEST(PageRaster, LevelsFollowTheirFormula)
{
    const struct {
        const char *what;
        double black, white, gamma;
    } cases[] = {
        {"stretched",        0.2,  0.8, 1.0},
        {"swapped points",   0.8,  0.2, 1.0},
        {"midtones darker",  0.1,  0.9, 2.2},
        {"points too close", 0.5,  0.5, 1.0},
        {"beyond the scale", -0.5, 1.5, 1.3},
    };
    QImage ramp(256, 1, QImage::Format_Grayscale8);
    for (int value = 0; value < 256; ++value)
        ramp.scanLine(0)[value] = static_cast<uchar>(value);
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const auto result = PageRaster::applyLevels(ramp, c.black, c.white, c.gamma);
        ASSERT_TRUE(result);
        const double lo = std::min(c.black, c.white);
        const double hi = std::max(std::max(c.black, c.white), lo + 0.01);
        for (int value = 0; value < 256; ++value) {
            const double base = std::clamp((value / 255.0 - lo) / (hi - lo), 0.0, 1.0);
            EXPECT_NEAR(qGray(result->pixel(value, 0)), 255 * std::pow(base, c.gamma), 0.51)
                << value;
        }
    }
}

TEST(PageRaster, LevelsTreatChannelsAlikeAndKeepTransparency)
{
    QImage image(1, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, QColor(51, 128, 204, 77));
    const auto result = PageRaster::applyLevels(image, 0.2, 0.8, 1);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->pixelColor(0, 0), QColor(0, 128, 255, 77));
}

TEST(PageRaster, ReducingTruncatesAndNeverEnlarges)
{
    const struct {
        QSize from;
        double maxDim;
        QSize to;
    } cases[] = {
        {{100, 50},  200, {100, 50}},
        {{100, 50},  33,  {33, 16} },
        {{10000, 1}, 100, {100, 1} },
    };
    for (const auto &c : cases) {
        const QImage image = noise(c.from);
        const auto reduced = PageRaster::downscale(image, c.maxDim);
        ASSERT_TRUE(reduced);
        EXPECT_EQ(reduced->size(), c.to);
        EXPECT_EQ(reduced->constBits() == image.constBits(), c.from == c.to);
    }
}

TEST(PageRaster, RenderingFollowsSizeRotationAndLimit)
{
    const struct {
        const char *what;
        QSizeF page;
        int rotation;
        double dpi;
        QSize pixels;
    } cases[] = {
        {"upright",     {200, 300},      0,  72,  {200, 300}  },
        {"on its side", {200, 300},      90, 144, {600, 400}  },
        {"dpi limited", {72, 36},        0,  600, {576, 288}  },
        {"A4 at 300",   {595.2, 841.92}, 0,  300, {2480, 3508}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        PdfPage page = plainPage(c.page, 90);
        page.setRotation(c.rotation);
        const auto image = PageRaster::render(page, PageRaster::Dpi{c.dpi});
        ASSERT_TRUE(image);
        EXPECT_EQ(image->size(), c.pixels);
        EXPECT_NEAR(qGray(image->pixel(image->rect().center())), 90, 1);
    }
    EXPECT_EQ(PageRaster::render(plainPage({200, 300}), PageRaster::MaxDim{150})->size(),
              QSize(100, 150));
    EXPECT_EQ(PageRaster::render(plainPage({10, 20}), PageRaster::MaxDim{1800})->size(),
              QSize(80, 160));
    EXPECT_FALSE(PageRaster::render(plainPage({14'400, 14'400}), PageRaster::Dpi{300}));
}

TEST(PageRaster, AScanComesBackPixelForPixel)
{
    const QImage image = noise({620, 877});
    const QSizeF size = image.size().toSizeF() * (72 / 300.0);
    const auto page = PageRaster::makePage(losslessImage(image).value(), size, {});
    ASSERT_TRUE(page);
    const auto rendered = PageRaster::render(*page, PageRaster::Dpi{300});
    ASSERT_TRUE(rendered);
    EXPECT_EQ(rendered->convertToFormat(QImage::Format_Grayscale8), image);
}

} // namespace
} // namespace velmor
