#include "pipeline/PageOutline.h"

#include <QPainter>
#include <QTransform>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace velmor {
namespace {

/// A sheet on the glass, or on a table under a camera, drawn with corners that are known.
struct Scene {
    const char *what;
    QColor ground;
    QColor paper;
    double skew = 0;             ///< Degrees clockwise.
    QSizeF sheet = {0.62, 0.62}; ///< Parts of the image's width and height.
    QPointF middle = {0.5, 0.5}; ///< Part of the image.
    double tilt = 0;             ///< How much shorter the upper side is, as a part.
    double grain = 2;            ///< Standard deviation of the noise, in steps of 255.
    double falloff = 0;          ///< How much darker the ground is at the right, in steps.
    int shadow = 0;              ///< To the right and below, in pixels.
    bool hasText = true;
};

constexpr QSize glass(1272, 1800);

QPolygonF cornersOf(const Scene &scene)
{
    const double w = scene.sheet.width() * glass.width() / 2;
    const double h = scene.sheet.height() * glass.height() / 2;
    const double upper = w * (1 - scene.tilt);
    QTransform place;
    place.translate(scene.middle.x() * glass.width(), scene.middle.y() * glass.height());
    place.rotate(scene.skew);
    return place.map(QPolygonF({
        {-upper, -h},
        {upper,  -h},
        {w,      h },
        {-w,     h }
    }));
}

/// Lines of words on the unit square, as dark as print: strokes with gaps as wide between them.
void print(QPainter &painter, const QTransform &toSheet, quint32 seed)
{
    std::minstd_rand random(seed);
    painter.setTransform(toSheet);
    for (double y = 0.08; y < 0.92; y += 0.018) {
        for (double x = 0.1; x < 0.9; x += 0.008) {
            for (auto strokes = 2 + random() % 8; strokes > 0 && x < 0.898; --strokes, x += 0.005)
                painter.fillRect(QRectF(x, y, 0.0025, 0.009), QColor(30, 30, 35));
        }
    }
    painter.resetTransform();
}

void addGrain(QImage &image, double deviation, double falloff)
{
    std::minstd_rand random(7);
    std::normal_distribution<double> normal(0, deviation);
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const double shift = normal(random) - falloff * x / image.width();
            const auto value = [shift](int v) {
                return std::clamp(static_cast<int>(std::lround(v + shift)), 0, 255);
            };
            line[x] = qRgb(value(qRed(line[x])), value(qGreen(line[x])), value(qBlue(line[x])));
        }
    }
}

QImage drawn(const Scene &scene)
{
    QImage image(glass, QImage::Format_RGB32);
    image.fill(scene.ground);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QPolygonF corners = cornersOf(scene);
    for (int reach = scene.shadow; reach > 0; --reach) {
        painter.setBrush(QColor(0, 0, 0, 90 / scene.shadow));
        painter.drawPolygon(corners.translated(reach, reach));
    }
    painter.setBrush(scene.paper);
    painter.drawPolygon(corners);
    QTransform toSheet;
    QTransform::squareToQuad(corners, toSheet);
    if (scene.hasText)
        print(painter, toSheet, 3);
    painter.end();
    addGrain(image, scene.grain, scene.falloff);
    return image;
}

/// How far the corner that is off the most is off, in pixels; a large number without corners.
double error(const std::optional<Quad> &found, const QPolygonF &corners)
{
    if (!found)
        return 1e9;
    double most = 0;
    for (const QPointF &corner : corners) {
        double nearest = 1e9;
        for (const QPointF &c : found->corners) {
            const QPointF at(c.x() * glass.width(), c.y() * glass.height());
            nearest = std::min(nearest, QLineF(at, corner).length());
        }
        most = std::max(most, nearest);
    }
    return most;
}

const QColor white(250, 250, 248);
const QColor cream(238, 228, 200);

TEST(PageOutline, FindsTheSheetOnAnyGround)
{
    const Scene scenes[] = {
        {.what = "black lid", .ground = {25, 25, 27}, .paper = white},
        {.what = "black lid, askew", .ground = {25, 25, 27}, .paper = white, .skew = 15},
        {.what = "grey lid", .ground = {128, 130, 132}, .paper = white, .skew = -8},
        {.what = "light lid", .ground = {228, 229, 230}, .paper = white, .skew = 3},
        {.what = "lid as white as paper nearly",
         .ground = {242, 243, 243},
         .paper = white,
         .skew = -4,
         .shadow = 4},
        {.what = "light lid, falling off",
         .ground = {232, 232, 232},
         .paper = white,
         .skew = 2,
         .falloff = 25},
        {.what = "dark photo on a white lid",
         .ground = {245, 245, 245},
         .paper = {70, 80, 60},
         .skew = 10,
         .sheet = {0.5, 0.3},
         .hasText = false},
        {.what = "receipt",
         .ground = {240, 240, 240},
         .paper = {222, 224, 226},
         .skew = -11,
         .sheet = {0.2, 0.6},
         .shadow = 4},
        {.what = "business card",
         .ground = {30, 30, 30},
         .paper = cream,
         .skew = 6,
         .sheet = {0.4, 0.18},
         .middle = {0.3, 0.2}},
        {.what = "photo of a table",
         .ground = {120, 85, 60},
         .paper = cream,
         .skew = -5,
         .sheet = {0.7, 0.7},
         .tilt = 0.2,
         .grain = 6,
         .falloff = 40,
         .shadow = 12},
        {.what = "in the corner of the glass",
         .ground = {60, 60, 62},
         .paper = white,
         .sheet = {0.7, 0.7},
         .middle = {0.35, 0.35}},
        {.what = "coloured sheet as light as the lid",
         .ground = {200, 200, 200},
         .paper = {250, 190, 160},
         .skew = 7},
        {.what = "much grain", .ground = {215, 215, 215}, .paper = white, .skew = 5, .grain = 12},
    };
    for (const Scene &scene : scenes) {
        SCOPED_TRACE(scene.what);
        // Half a percent of the longer side.
        EXPECT_LT(error(findPageOutline(drawn(scene)), cornersOf(scene)), 9);
    }
}

TEST(PageOutline, GreyImagesAndSmallOnesServeToo)
{
    const Scene scene{
        .what = "", .ground = {90, 90, 90},
             .paper = white, .skew = 5
    };
    const QImage image = drawn(scene);
    EXPECT_LT(
        error(findPageOutline(image.convertToFormat(QImage::Format_Grayscale8)), cornersOf(scene)),
        9);
    EXPECT_LT(error(findPageOutline(
                        image.scaled(318, 450, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)),
                    cornersOf(scene)),
              9);
}

TEST(PageOutline, ProposesNothingWhenUnsure)
{
    const QColor lid(60, 60, 62);
    const Scene full{
        .what = "", .ground = white, .paper = white, .sheet = {1, 1}
    };
    EXPECT_FALSE(findPageOutline(drawn(full))) << "a page of text";
    Scene blank = full;
    blank.hasText = false;
    EXPECT_FALSE(findPageOutline(drawn(blank))) << "a blank page";
    EXPECT_FALSE(findPageOutline(drawn({
        .what = "", .ground = lid, .paper = white, .skew = 0.2, .sheet = {0.985, 0.985}
    })))
        << "practically the whole image";
    EXPECT_FALSE(findPageOutline({}));
    EXPECT_FALSE(findPageOutline(QImage(1, 500, QImage::Format_Mono)));

    QImage framed = drawn(full);
    QImage pictured = framed;
    QImage two = drawn({
        .what = "", .ground = lid, .paper = white, .sheet = {0.4,  0.5},
                   .middle = {0.25, 0.4}
    });
    QImage round = drawn({.what = "", .ground = lid, .paper = lid, .hasText = false});
    QPainter painter(&framed);
    painter.setPen(QPen(Qt::black, 5));
    painter.drawRect(80, 80, glass.width() - 160, glass.height() - 160);
    painter.end();
    painter.begin(&pictured);
    painter.fillRect(200, 300, 700, 500, QColor(90, 120, 150));
    painter.end();
    painter.begin(&two);
    painter.fillRect(800, 300, 400, 700, white);
    painter.end();
    painter.begin(&round);
    painter.setBrush(white);
    painter.drawEllipse(200, 300, 800, 800);
    painter.end();
    EXPECT_FALSE(findPageOutline(framed)) << "a page with a frame";
    EXPECT_FALSE(findPageOutline(pictured)) << "a picture among text";
    EXPECT_FALSE(findPageOutline(two)) << "two sheets";
    EXPECT_FALSE(findPageOutline(round)) << "a plate";
}

} // namespace
} // namespace velmor
