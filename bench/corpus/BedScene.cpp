#include "bench/corpus/BedScene.h"

#include <QPainter>
#include <QPainterPath>
#include <QTransform>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace corpus {
namespace {

constexpr double millimetersPerInch = 25.4;

cv::Mat view(QImage &image)
{
    return {image.height(), image.width(), CV_8UC4, image.bits(), size_t(image.bytesPerLine())};
}

/// From a sheet's own millimetres, with their origin in its top left corner, to the bed's pixels.
QTransform placement(const PlacedSheet &placed, double scale)
{
    QTransform transform;
    transform.scale(scale, scale);
    transform.translate(placed.center.x(), placed.center.y());
    transform.rotate(placed.angle);
    transform.translate(-placed.size.width() / 2, -placed.size.height() / 2);
    return transform;
}

QPainterPath paperPath(const PlacedSheet &placed, Random &random)
{
    const QRectF box({0, 0}, placed.size);
    QPainterPath path;
    if (placed.outline == Outline::rounded) {
        path.addRoundedRect(box, 3, 3);
        return path;
    }
    path.moveTo(box.topLeft());
    if (placed.outline == Outline::dogEared) {
        path.lineTo(box.right() - 9, 0);
        path.lineTo(box.right(), 9);
    } else {
        path.lineTo(box.topRight());
    }
    path.lineTo(box.bottomRight());
    if (placed.outline == Outline::torn) {
        for (double x = box.right() - 0.7; x > 0; x -= 0.7)
            path.lineTo(x, box.bottom() - random.between(0, 1.2));
    }
    path.lineTo(box.bottomLeft());
    path.closeSubpath();
    return path;
}

/// Paints the lid's plain colour darker where light doesn't reach beside a sheet.
void castShadow(QImage &image, const QPainterPath &path, const Bed &bed, double scale)
{
    cv::Mat depth(image.height(), image.width(), CV_8UC1, cv::Scalar(0));
    QImage mask(depth.data, depth.cols, depth.rows, qsizetype(depth.step),
                QImage::Format_Grayscale8);
    {
        QPainter painter(&mask);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(bed.shadowSide * scale);
        painter.fillPath(path, Qt::white);
    }
    const double sigma = std::max(0.3, bed.shadowWidth * scale / 2);
    cv::GaussianBlur(depth, depth, {}, sigma);
    cv::Mat shadow;
    cv::cvtColor(depth, shadow, cv::COLOR_GRAY2BGRA);
    shadow *= bed.shadow / 255;
    cv::Mat pixels = view(image);
    cv::subtract(pixels, shadow, pixels);
}

void sprinkle(QImage &image, const Bed &bed, double scale, Random &random)
{
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < bed.dust; ++i) {
        const int level = random.chance(0.5) ? 200 : 70;
        painter.setBrush(QColor(level, level, level));
        const double size = random.between(0.05, 0.3) * scale;
        painter.drawEllipse(
            QPointF(random.between(0, image.width()), random.between(0, image.height())), size,
            size * random.between(0.4, 1));
    }
}

/// Uneven light from the left to the right and from the middle to the corners, grain, noise.
void expose(QImage &image, const Bed &bed, std::uint64_t seed)
{
    cv::Mat pixels = view(image);
    cv::RNG generator(seed | 1);
    cv::Mat noise(pixels.rows, pixels.cols, CV_16SC4);
    for (int y = 0; y < pixels.rows && bed.falloff > 0; ++y) {
        auto *row = pixels.ptr<cv::Vec4b>(y);
        for (int x = 0; x < pixels.cols; ++x) {
            const double u = double(x) / pixels.cols;
            const double v = double(y) / pixels.rows - 0.5;
            const double light = 1 - bed.falloff * (0.6 * u + 1.6 * v * v);
            for (int c = 0; c < 3; ++c)
                row[x][c] = cv::saturate_cast<uchar>(row[x][c] * light);
        }
    }
    if (bed.noise > 0) {
        generator.fill(noise, cv::RNG::NORMAL, 0, bed.noise);
        cv::add(pixels, noise, pixels, cv::noArray(), CV_8U);
    }
    // The fourth byte of a pixel is no channel.
    cv::Mat opaque(pixels.size(), CV_8UC1, cv::Scalar(255));
    const int fromTo[] = {0, 3};
    cv::mixChannels(&opaque, 1, &pixels, 1, fromTo, 1);
}

void addGrain(QImage &image, double grain, double scale, std::uint64_t seed)
{
    if (grain <= 0)
        return;
    cv::Mat pixels = view(image);
    cv::RNG generator(seed * 31 | 1);
    // A grain of half a millimetre, as foam and felt have it.
    const cv::Size coarse(std::max(2, int(pixels.cols / scale * 2)),
                          std::max(2, int(pixels.rows / scale * 2)));
    cv::Mat texture(coarse, CV_32FC1);
    generator.fill(texture, cv::RNG::NORMAL, 0, grain);
    cv::resize(texture, texture, pixels.size(), 0, 0, cv::INTER_LINEAR);
    cv::Mat channels;
    cv::merge(std::vector<cv::Mat>(4, texture), channels);
    cv::add(pixels, channels, pixels, cv::noArray(), CV_8U);
}

void sampleContent(const PlacedSheet &placed, const QTransform &toBed, QSize bed,
                   std::vector<QPointF> &points)
{
    const QImage &mask = placed.sheet.content;
    const double toMillimeters = placed.size.width() / mask.width();
    const QRectF frame({0, 0}, QSizeF(bed));
    for (int y = 0; y < mask.height(); ++y) {
        const uchar *row = mask.constScanLine(y);
        const bool isEdgeRow = y % 3 == 0 || y + 1 == mask.height();
        for (int x = 0; x < mask.width() && isEdgeRow; ++x) {
            if (row[x] == 0)
                continue;
            const QPointF at =
                toBed.map(QPointF((x + 0.5) * toMillimeters, (y + 0.5) * toMillimeters));
            if (frame.contains(at))
                points.push_back(at);
        }
    }
}

} // namespace

double BedScene::contentBeyond(QPointF center, QSizeF size, double degrees) const
{
    QTransform toPage;
    toPage.rotate(-degrees);
    toPage.translate(-center.x(), -center.y());
    double most = 0;
    for (const QPointF point : content) {
        const QPointF at = toPage.map(point);
        most = std::max(
            {most, std::abs(at.x()) - size.width() / 2, std::abs(at.y()) - size.height() / 2});
    }
    return most;
}

BedScene renderBed(const Bed &bed, const std::vector<PlacedSheet> &sheets, std::uint64_t seed)
{
    const double scale = bed.dpi / millimetersPerInch;
    Random random(seed);
    BedScene scene;
    scene.image = QImage((bed.size * scale).toSize(), QImage::Format_RGB32);
    scene.image.setDotsPerMeterX(int(std::lround(scale * 1000)));
    scene.image.setDotsPerMeterY(scene.image.dotsPerMeterX());
    scene.image.fill(bed.lid);
    addGrain(scene.image, bed.lidGrain, scale, seed);

    for (const PlacedSheet &placed : sheets) {
        const QTransform toBed = placement(placed, scale);
        const QPainterPath path = paperPath(placed, random);
        if (bed.shadow > 0)
            castShadow(scene.image, toBed.map(path), bed, scale);
        QPainter painter(&scene.image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        painter.setTransform(toBed);
        // As a brush, so that the paper's own outline is smooth.
        const QImage &picture = placed.sheet.picture;
        QBrush brush(picture);
        brush.setTransform(QTransform::fromScale(placed.size.width() / picture.width(),
                                                 placed.size.height() / picture.height()));
        painter.fillPath(path, brush);
        painter.end();
        const QRectF box({0, 0}, placed.size);
        scene.papers.append(toBed.map(QPolygonF(
            QList<QPointF>{box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()})));
        sampleContent(placed, toBed, scene.image.size(), scene.content);
    }
    if (!sheets.empty())
        scene.angle = sheets.front().angle;
    sprinkle(scene.image, bed, scale, random);
    expose(scene.image, bed, seed);
    return scene;
}

} // namespace corpus
