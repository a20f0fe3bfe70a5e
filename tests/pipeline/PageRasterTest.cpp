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
        {"as it was",           0,    1,     1    },
        {"stretched",           0.2,  0.8,   1    },
        {"swapped points",      0.8,  0.2,   1    },
        {"swapped, darker",     0.93, 0.07,  1.7  },
        {"midtones darker",     0.1,  0.9,   2.2  },
        {"crispest",            0.15, 0.85,  2.83 },
        {"softest",             0.05, 0.95,  0.354},
        {"for little print",    0.8,  0.95,  0.85 },
        {"points equal",        0.5,  0.5,   1    },
        {"points equal, white", 1,    1,     0.7  },
        {"points too close",    0.3,  0.305, 1.4  },
        {"white above 1",       0.1,  1.4,   0.85 },
        {"black below 0",       -0.4, 0.9,   1.2  },
        {"beyond the scale",    -0.5, 1.5,   1.3  },
    };
    for (const QImage::Format format : {QImage::Format_Grayscale8, QImage::Format_RGB32}) {
        QImage ramp(256, 1, format);
        for (int value = 0; value < 256; ++value)
            ramp.setPixelColor(value, 0, QColor(value, value, value));
        for (const auto &c : cases) {
            SCOPED_TRACE(c.what);
            const auto result = PageRaster::applyLevels(ramp, c.black, c.white, c.gamma);
            ASSERT_TRUE(result);
            const double lo = std::min(c.black, c.white);
            const double hi = std::max(std::max(c.black, c.white), lo + 0.01);
            for (int value = 0; value < 256; ++value) {
                const double base = std::clamp((value / 255.0 - lo) / (hi - lo), 0.0, 1.0);
                const double wanted = 255 * std::pow(base, c.gamma);
                const QRgb got = result->pixel(value, 0);
                EXPECT_NEAR(qRed(got), wanted, 0.51) << value;
                EXPECT_TRUE(qRed(got) == qGreen(got) && qGreen(got) == qBlue(got)) << value;
            }
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
