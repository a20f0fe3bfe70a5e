#include "bench/corpus/Canvas.h"

#include <QPainterPath>
#include <opencv2/imgproc.hpp>

#include <cmath>

namespace corpus {
namespace {

/// How far the paper mask keeps from everything drawn, in millimetres.
constexpr double clearance = 0.5;
/// Coverage from which a pixel is the core of a stroke, of 255.
constexpr int coreCoverage = 200;

cv::Mat view(QImage &image)
{
    const int type = image.format() == QImage::Format_Grayscale8 ? CV_8UC1 : CV_8UC4;
    return {image.height(), image.width(), type, image.bits(), size_t(image.bytesPerLine())};
}

/// A landscape of soft shapes with grain: mean levels, deep shadows and light skies.
cv::Mat landscape(QSize size, QRandomGenerator &random, bool isColored)
{
    cv::Mat coarse(9, 9, CV_8UC4);
    for (int y = 0; y < coarse.rows; ++y) {
        for (int x = 0; x < coarse.cols; ++x) {
            const int level = 40 + (coarse.rows - y) * 18 + int(random.bounded(80)) - 40;
            const auto tinted = [&](int shift) {
                return cv::saturate_cast<uchar>(level + shift + int(random.bounded(30)));
            };
            coarse.at<cv::Vec4b>(y, x) = {tinted(y < 4 ? 45 : -30), tinted(10), tinted(-15), 255};
        }
    }
    cv::Mat picture;
    cv::resize(coarse, picture, {size.width(), size.height()}, 0, 0, cv::INTER_CUBIC);
    const double side = std::min(size.width(), size.height());
    for (int i = 0; i < 40; ++i) {
        const cv::Point at(int(random.bounded(size.width())), int(random.bounded(size.height())));
        const cv::Scalar color(random.bounded(230), random.bounded(230), random.bounded(230), 255);
        cv::circle(picture, at, int(side * (0.01 + 0.09 * random.generateDouble())), color, -1,
                   cv::LINE_AA);
    }
    cv::Mat noise(picture.size(), CV_8SC4);
    cv::RNG generator(random.generate());
    generator.fill(noise, cv::RNG::NORMAL, 0, 5);
    cv::add(picture, noise, picture, cv::noArray(), CV_8U);
    if (!isColored) {
        cv::Mat grey;
        cv::cvtColor(picture, grey, cv::COLOR_BGRA2GRAY);
        cv::cvtColor(grey, picture, cv::COLOR_GRAY2BGRA);
    }
    return picture;
}

QImage blankMask(QSize size, int level)
{
    QImage mask(size, QImage::Format_Grayscale8);
    mask.fill(QColor(level, level, level));
    return mask;
}

} // namespace

Canvas::Canvas(const PageRecipe &recipe)
    : m_recipe(recipe), m_random(recipe.seed), m_pixelsPerMm(recipe.dpi / 25.4)
{
    const QSize size(int(std::lround(width() * m_pixelsPerMm)),
                     int(std::lround(height() * m_pixelsPerMm)));
    m_art.page = QImage(size, QImage::Format_RGB32);
    m_art.page.fill(recipe.paper);
    m_art.page.setDotsPerMeterX(int(std::lround(recipe.dpi / 0.0254)));
    m_art.page.setDotsPerMeterY(m_art.page.dotsPerMeterX());
    m_art.ink = m_art.color = m_art.photo = m_touched = m_coverage = blankMask(size, 0);
    // Fibres: clouds of a few tenths of a millimetre, too weak to be seen.
    cv::Mat clouds(int(height()) + 1, int(width()) + 1, CV_8UC1);
    cv::RNG generator(m_random.generate());
    generator.fill(clouds, cv::RNG::NORMAL, 3, 1.2);
    cv::Mat fibres;
    cv::resize(clouds, fibres, {size.width(), size.height()}, 0, 0, cv::INTER_CUBIC);
    cv::cvtColor(fibres, fibres, cv::COLOR_GRAY2BGRA);
    cv::Mat page = view(m_art.page);
    cv::subtract(page, fibres, page);
}

double Canvas::uniform(double from, double to)
{
    return from + (to - from) * m_random.generateDouble();
}

void Canvas::paint(QImage &image, QColor color, double widthMm, const Strokes &strokes) const
{
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(m_pixelsPerMm, m_pixelsPerMm);
    if (widthMm > 0) {
        painter.setPen(QPen(color, widthMm, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
    }
    strokes(painter);
}

void Canvas::draw(Mark mark, QColor color, double widthMm, const Strokes &strokes)
{
    // Painting is slow, so it is done once, and what it covered goes to the sheet and the masks.
    paint(m_coverage, Qt::white, widthMm, strokes);
    const int light[] = {color.blue(), color.green(), color.red()};
    for (int y = 0; y < m_coverage.height(); ++y) {
        cv::Mat coverage = view(m_coverage).row(y);
        if (cv::countNonZero(coverage) == 0)
            continue;
        auto *pixel = reinterpret_cast<cv::Vec4b *>(m_art.page.scanLine(y));
        for (int x = 0; x < coverage.cols; ++x) {
            const int covered = coverage.at<uchar>(x);
            for (int channel = 0; covered > 0 && channel < 3; ++channel) {
                const int left = 255 - covered * (255 - light[channel]) / 255;
                pixel[x][channel] = uchar(pixel[x][channel] * left / 255);
            }
        }
        for (QImage *mask : {&m_touched, mark == Mark::wash ? nullptr : &m_art.ink,
                             mark == Mark::ink ? nullptr : &m_art.color}) {
            if (mask == nullptr)
                continue;
            cv::Mat row = view(*mask).row(y);
            cv::max(row, coverage, row);
        }
        coverage.setTo(0);
    }
}

void Canvas::scratch(QColor color, const Strokes &strokes)
{
    paint(m_art.page, color, 0, strokes);
    paint(m_art.ink, Qt::black, 0.2, strokes);
    paint(m_art.ink, Qt::black, 0, strokes);
}

void Canvas::drawPhotograph(QRectF place, bool isColored)
{
    const QRect pixels = QRectF(place.topLeft() * m_pixelsPerMm, place.size() * m_pixelsPerMm)
                             .toAlignedRect()
                             .intersected(m_art.page.rect());
    const cv::Rect area(pixels.x(), pixels.y(), pixels.width(), pixels.height());
    // Printed on the paper, so never lighter than it.
    cv::Mat picture = landscape(pixels.size(), m_random, isColored);
    cv::Mat target = view(m_art.page)(area);
    cv::multiply(target, picture, target, 1 / 255.0);
    view(m_art.photo)(area).setTo(255);
    view(m_touched)(area).setTo(255);
    if (isColored)
        view(m_art.color)(area).setTo(255);
}

void Canvas::stain(QColor color, double widthMm, double blurMm, const Strokes &strokes)
{
    QImage light(m_art.page.size(), QImage::Format_Grayscale8);
    light.fill(Qt::white);
    paint(light, color, widthMm, strokes);
    cv::Mat soft = view(light);
    if (blurMm > 0)
        cv::GaussianBlur(soft, soft, {}, blurMm * m_pixelsPerMm);
    cv::Mat touched = view(m_touched);
    touched.setTo(255, soft < 253);
    cv::Mat page = view(m_art.page);
    cv::Mat factors;
    cv::cvtColor(soft, factors, cv::COLOR_GRAY2BGRA);
    cv::multiply(page, factors, page, 1 / 255.0);
}

void Canvas::roughen(double missing)
{
    cv::Mat page = view(m_art.page);
    cv::Mat grains(page.size(), CV_8UC1);
    cv::RNG generator(m_random.generate());
    generator.fill(grains, cv::RNG::UNIFORM, 0, 256);
    cv::GaussianBlur(grains, grains, {}, 0.04 * m_pixelsPerMm);
    cv::Mat ink = view(m_art.ink);
    const QColor paper = m_recipe.paper;
    // A grain of paper shows through by half.
    for (int y = 0; y < page.rows; ++y) {
        for (int x = 0; x < page.cols; ++x) {
            if (ink.at<uchar>(y, x) == 0 || grains.at<uchar>(y, x) > 128 + 60 * missing)
                continue;
            auto &pixel = page.at<cv::Vec4b>(y, x);
            pixel[0] = uchar((pixel[0] + paper.blue()) / 2);
            pixel[1] = uchar((pixel[1] + paper.green()) / 2);
            pixel[2] = uchar((pixel[2] + paper.red()) / 2);
        }
    }
}

PageArt Canvas::finished()
{
    for (QImage *mask : {&m_art.ink, &m_art.color})
        cv::threshold(view(*mask), view(*mask), coreCoverage - 1, 255, cv::THRESH_BINARY);
    m_art.paper = m_touched;
    cv::Mat paper = view(m_art.paper);
    const int side = 1 + 2 * int(std::ceil(clearance * m_pixelsPerMm));
    cv::dilate(paper, paper, cv::getStructuringElement(cv::MORPH_RECT, {side, side}));
    cv::threshold(paper, paper, 0, 255, cv::THRESH_BINARY_INV);
    return m_art;
}

} // namespace corpus
