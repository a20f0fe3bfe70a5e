#include "calibration/AutoTune.h"

#include "calibration/SliderScale.h"

#include <QColor>
#include <gmock/gmock.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <vector>

namespace velmor {

void PrintTo(const Tones &tones, std::ostream *out)
{
    *out << "brightness " << tones.brightness << ", contrast " << tones.contrast;
}

namespace {

QImage plain(QSize size, QRgb color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QImage grey(QSize size, int level)
{
    return plain(size, qRgb(level, level, level));
}

/// `image` with its first pixels, row by row, of this level.
QImage with(QImage image, int pixels, int level)
{
    for (int i = 0; i < pixels; ++i)
        image.setPixelColor(i % image.width(), i / image.width(), QColor(level, level, level));
    return image;
}

TEST(AutoTune, SpreadsTheLevelsOfASample)
{
    QImage clear(50, 40, QImage::Format_ARGB32);
    clear.fill(qRgba(255, 255, 255, 0));
    const struct {
        const char *what;
        QImage sample;
        Tones wanted;
    } cases[] = {
        {"all 128", grey({50, 40}, 128), {0, 850}},
        {"all white", grey({50, 40}, 255), {-381, 850}},
        {"all black", grey({50, 40}, 0), {384, 850}},
        {"transparent, so black", clear, {384, 850}},
        {"from black to white", with(grey({50, 40}, 255), 1000, 0), {3, 0}},
        {"a middle below a half", with(grey({50, 40}, 200), 1000, 101), {-66, 850}},
        {"a span of 132", with(grey({50, 40}, 182), 1000, 50), {36, 838}},
        {"a span of 131", with(grey({50, 40}, 181), 1000, 50), {39, 850}},
        {"fewer than a twentieth dark", with(grey({50, 40}, 200), 99, 0), {-216, 850}},
        {"just a twentieth dark", with(grey({50, 40}, 200), 100, 0), {84, 247}},
        {"19 pixels, no twentieth", grey({19, 1}, 200), {84, 247}},
        {"20 pixels", grey({20, 1}, 200), {-216, 850}},
        {"pure red", plain({30, 30}, qRgb(255, 0, 0)), {156, 850}},
        {"pure green", plain({30, 30}, qRgb(0, 255, 0)), {-63, 850}},
        {"pure blue", plain({30, 30}, qRgb(0, 0, 255)), {297, 850}},
        {"a strip, reduced to 200 by 1", grey({4000, 10}, 128), {0, 850}},
        {"a long strip", grey({1, 3000}, 128), {0, 850}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(autoTune(c.sample), c.wanted);
    }
    EXPECT_FALSE(autoTune(QImage()));
}

/// The same by sorting all luminances: the number of pixels at or below a level is what the running
/// sum of a histogram is.
Tones bySorting(const QImage &image)
{
    std::vector<int> sorted;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            sorted.push_back((299 * color.red() + 587 * color.green() + 114 * color.blue()) / 1000);
        }
    }
    std::ranges::sort(sorted);
    const auto at = [&](double share) {
        const auto rank = static_cast<size_t>(double(sorted.size()) * share);
        return rank == 0 ? 0 : sorted[rank - 1];
    };
    const int low = at(0.05);
    const int high = at(0.95);
    const int range = high - low < 8 ? 8 : high - low;
    const double contrast = (255.0 / range - 1) * 900;
    const int brightness = (128 - (low + high) / 2) * 3;
    return {brightness > 400    ? 400
            : brightness < -400 ? -400
                                : brightness,
            contrast > 850 ? 850 : int(contrast)};
}

TEST(AutoTune, AgreesWithSortingOnPicturesOfAllKinds)
{
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const int low = int(random() % 200);
        const int span = 1 + int(random() % uint(255 - low));
        QImage image(1 + int(random() % 200), 1 + int(random() % 60), QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const auto level = [&] {
                    return low + int(random() % uint(span));
                };
                image.setPixel(x, y, qRgb(level(), level(), level()));
            }
        }
        EXPECT_EQ(autoTune(image), bySorting(image));
    }
}

TEST(AutoTune, MeasuresAWideSampleAtTwoHundredPixels)
{
    // Each pixel of the reduced picture is the mean of 5 by 5: a grid of lines becomes one grey,
    // 204 but for the rounding of its making.
    QImage lines = grey({1000, 10}, 255);
    for (int x = 0; x < lines.width(); x += 5) {
        for (int y = 0; y < lines.height(); ++y)
            lines.setPixel(x, y, qRgb(0, 0, 0));
    }
    for (const QImage::Format format :
         {QImage::Format_RGB32, QImage::Format_Grayscale8, QImage::Format_Mono}) {
        SCOPED_TRACE(format);
        const std::optional<Tones> tones = autoTune(lines.convertToFormat(format));
        EXPECT_NEAR(tones->brightness, (128 - 204) * 3, 3);
        EXPECT_EQ(tones->contrast, 850);
    }
}

TEST(SliderScale, StoresTenthsAndShowsWholes)
{
    const struct {
        double moved;
        int stored, readout;
    } cases[] = {
        {12.34,  123,  12 },
        {12.35,  124,  12 },
        {-12.35, -124, -12},
        {0.05,   1,    0  },
        {-0.05,  -1,   0  },
        {-0.04,  0,    0  },
        {100,    1000, 100},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.moved);
        EXPECT_EQ(SliderScale::setting(c.moved), c.stored);
        EXPECT_EQ(SliderScale::readout(SliderScale::position(c.stored)), c.readout);
    }
    EXPECT_EQ(SliderScale::position(123), 12.3);
}

} // namespace
} // namespace velmor
