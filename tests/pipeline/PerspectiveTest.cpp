#include "pipeline/Perspective.h"

#include "tests/pipeline/TestPages.h"

#include <QTransform>
#include <gtest/gtest.h>

#include <cmath>

namespace velmor {
namespace {

Quad region(const QRectF &r)
{
    return {
        {r.topLeft(), r.topRight(), r.bottomRight(), r.bottomLeft()}
    };
}

const Quad wholeImage = region({0, 0, 1, 1});

TEST(Quad, IsUsableWhenAllCornersTurnTheSameWay)
{
    const struct {
        const char *what;
        Quad quad;
        bool isUsable;
    } cases[] = {
        {"whole image",     wholeImage,                                   true },
        {"tilted",          {{{{.1, 0}, {1, .2}, {.9, 1}, {0, .7}}}},     true },
        {"mirrored",        {{{{1, 0}, {0, 0}, {0, 1}, {1, 1}}}},         true },
        {"a pixel of many", region({.5, .5, 1e-4, 1e-4}),                 true },
        {"spot",            {{{{.5, .5}, {.5, .5}, {.5, .5}, {.5, .5}}}}, false},
        {"line",            {{{{.1, .1}, {.2, .2}, {.3, .3}, {.7, .7}}}}, false},
        {"three in a line", {{{{0, 0}, {.5, 0}, {1, 0}, {.5, 1}}}},       false},
        {"bow tie",         {{{{0, 0}, {1, 1}, {1, 0}, {0, 1}}}},         false},
        {"dent",            {{{{0, 0}, {1, 0}, {.3, .3}, {0, 1}}}},       false},
        {"off the image",   region({0, 0, 1, 1.001}),                     false},
        {"no number",       region({0, 0, 1, std::nan("")}),              false},
    };
    for (const auto &c : cases)
        EXPECT_EQ(isUsable(c.quad), c.isUsable) << c.what;
}

TEST(Quad, CornersAreOrderedByHeightAndThenBySide)
{
    const QPointF a(.2, .1);
    const QPointF b(.8, .2);
    const QPointF c(.9, .8);
    const QPointF d(.1, .7);
    std::array points{&a, &b, &c, &d};
    std::ranges::sort(points);
    do {
        EXPECT_EQ(orderQuad({*points[0], *points[1], *points[2], *points[3]}), Quad({a, b, c, d}));
    } while (std::ranges::next_permutation(points).found);
    // Turned by nearly half a right angle, the two highest corners don't share an edge.
    EXPECT_EQ(orderQuad({QPointF(.5, 0), QPointF(1, .5), QPointF(.5, 1), QPointF(0, .4)}),
              Quad({QPointF(0, .4), QPointF(.5, 0), QPointF(1, .5), QPointF(.5, 1)}));
}

TEST(Perspective, AlongPixelBordersEveryPixelStays)
{
    QImage colours(60, 45, QImage::Format_RGB32);
    for (int y = 0; y < colours.height(); ++y) {
        for (int x = 0; x < colours.width(); ++x)
            colours.setPixel(x, y, qRgb(x * 4, y * 5, (x * y) % 256));
    }
    for (const QImage &image : {colours, noise({60, 45}), noise({1, 1})}) {
        EXPECT_EQ(correctPerspective(image, wholeImage), image);
        for (const QRect part : {QRect(7, 3, 40, 30), QRect(0, 0, 1, 45), QRect(59, 44, 1, 1)}) {
            if (!image.rect().contains(part))
                continue;
            const QRectF fractions(part.x() / 60.0, part.y() / 45.0, part.width() / 60.0,
                                   part.height() / 45.0);
            const Quad quad = region(fractions);
            EXPECT_EQ(correctPerspective(image, quad), image.copy(part));
            const auto &c = quad.corners;
            EXPECT_EQ(correctPerspective(image,
                                         {
                                             {c[1], c[0], c[3], c[2]}
            }),
                      image.copy(part).mirrored(true, false));
            EXPECT_EQ(correctPerspective(image,
                                         {
                                             {c[3], c[0], c[1], c[2]}
            }),
                      image.copy(part).transformed(QTransform().rotate(90)));
        }
    }
}

/// Ink, 0 to 1, of a card of `size` pixels at a place in fractions of it: round dots in a grid,
/// as small as the full stops of print.
constexpr int dots = 8;

double ink(QPointF at, QSizeF size)
{
    constexpr double sigma = 1.6; // pixels
    const auto middle = [](double v) {
        return (std::clamp(std::floor(v * dots), 0.0, dots - 1.0) + 0.5) / dots;
    };
    const double dx = (at.x() - middle(at.x())) * size.width();
    const double dy = (at.y() - middle(at.y())) * size.height();
    return std::exp(-(dx * dx + dy * dy) / (2 * sigma * sigma));
}

/// The middle of the dark in `part` of a grey image, in pixels from the image's edge.
QPointF centroid(const QImage &image, const QRect &part)
{
    QPointF sum;
    double weight = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const double dark = 255 - image.constScanLine(y)[x];
            sum += dark * QPointF(x + 0.5, y + 0.5);
            weight += dark;
        }
    }
    return sum / weight;
}

TEST(Perspective, ATestCardComesBackInPlaceAndSharp)
{
    const QSize photo(900, 1100);
    const Quad quads[] = {
        {{{{.1, .08}, {.93, .05}, {.9, .95}, {.06, .9}}}},
        {{{{.25, .1}, {.8, .15}, {.95, .9}, {.03, .85}}}}, // leaning back
        {{{{.9, .1}, {.95, .9}, {.1, .95}, {.05, .2}}}},   // on its side
    };
    for (const Quad &quad : quads) {
        QPolygonF corners;
        for (const QPointF &c : quad.corners)
            corners.append({c.x() * photo.width(), c.y() * photo.height()});
        QTransform toPhoto;
        ASSERT_TRUE(QTransform::squareToQuad(corners, toPhoto));
        const double width = std::max(QLineF(corners[0], corners[1]).length(),
                                      QLineF(corners[3], corners[2]).length());
        const double height = std::max(QLineF(corners[0], corners[3]).length(),
                                       QLineF(corners[1], corners[2]).length());
        QImage image(photo, QImage::Format_Grayscale8);
        const QTransform toCard = toPhoto.inverted();
        for (int y = 0; y < photo.height(); ++y) {
            for (int x = 0; x < photo.width(); ++x) {
                const QPointF at = toCard.map(QPointF(x + 0.5, y + 0.5));
                image.scanLine(y)[x] = uchar(std::lround(255 * (1 - ink(at, {width, height}))));
            }
        }
        const auto card = correctPerspective(image, quad);
        ASSERT_TRUE(card);
        ASSERT_EQ(card->format(), QImage::Format_Grayscale8);
        EXPECT_EQ(card->size(), QSize(qRound(width), qRound(height)));

        double squares = 0;
        for (int y = 0; y < card->height(); ++y) {
            for (int x = 0; x < card->width(); ++x) {
                const QPointF at((x + 0.5) / card->width(), (y + 0.5) / card->height());
                const double wanted = 255 * (1 - ink(at, {width, height}));
                squares += std::pow(card->constScanLine(y)[x] - wanted, 2);
            }
        }
        EXPECT_LT(squares / (double(card->width()) * card->height()), 1.0) << "below 48 dB";
        for (int row = 0; row < dots; ++row) {
            for (int column = 0; column < dots; ++column) {
                const QPointF wanted((column + 0.5) / dots * card->width(),
                                     (row + 0.5) / dots * card->height());
                const QPoint middle = wanted.toPoint();
                const QPointF found =
                    centroid(*card, QRect(middle.x() - 12, middle.y() - 12, 24, 24));
                EXPECT_LT(QLineF(found, wanted).length(), 0.1) << row << ", " << column;
            }
        }
    }
}

TEST(Perspective, ImagesMayBeLongerThanOpenCVTakes)
{
    QImage strip(40'000, 30, QImage::Format_RGB32);
    strip.fill(Qt::white);
    for (int y = 0; y < strip.height(); ++y) {
        for (int x = 39'000; x < 39'020; ++x)
            strip.setPixel(x, y, qRgb(200, 0, 0));
    }
    const auto result = correctPerspective(strip, {{{{0, 0}, {1, .1}, {1, .9}, {0, 1}}}});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->size(), QSize(40'000, 30));
    int first = 0;
    while (first < result->width() && result->pixel(first, 15) == qRgb(255, 255, 255))
        ++first;
    EXPECT_NEAR(first, 39'000 - 1800, 1900) << "perspective shortens one end alone";
    EXPECT_LT(first, result->width());
}

TEST(Perspective, WhatCannotBeDoneIsRefused)
{
    const QImage image = noise({40, 30});
    EXPECT_FALSE(correctPerspective({}, wholeImage));
    EXPECT_FALSE(correctPerspective(image, {{{{0, 0}, {1, 1}, {1, 0}, {0, 1}}}}));
    // One pixel wide is the least, and a slanting region may have more pixels than the image.
    EXPECT_EQ(correctPerspective(image, {{{{.5, 0}, {.502, 0}, {.502, 1}, {.5, .999}}}})->size(),
              QSize(1, 30));
    QImage large(17'320, 17'320, QImage::Format_Mono);
    ASSERT_FALSE(large.isNull());
    EXPECT_FALSE(correctPerspective(large, {{{{0, 0}, {1, .02}, {1, 1}, {0, 1}}}}));
}

TEST(Perspective, GreyStaysGreyAndTransparentIsWhite)
{
    const Quad quad{{{{.1, .1}, {.9, .15}, {.85, .9}, {.1, .8}}}};
    QImage glass(50, 50, QImage::Format_ARGB32);
    glass.fill(qRgba(255, 0, 0, 0));
    QImage deep(50, 50, QImage::Format_Grayscale16);
    deep.fill(Qt::black);
    QImage bits(50, 50, QImage::Format_Mono);
    bits.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    bits.fill(1);
    for (const Quad &box : {quad, wholeImage}) {
        EXPECT_EQ(correctPerspective(glass, box)->pixel(5, 5), qRgb(255, 255, 255));
        EXPECT_EQ(correctPerspective(deep, box)->format(), QImage::Format_Grayscale8);
        EXPECT_EQ(correctPerspective(deep, box)->pixel(5, 5), qRgb(0, 0, 0));
        EXPECT_EQ(correctPerspective(bits, box)->format(), QImage::Format_Grayscale8);
        EXPECT_EQ(correctPerspective(bits, box)->pixel(5, 5), qRgb(255, 255, 255));
    }
}

} // namespace
} // namespace velmor
