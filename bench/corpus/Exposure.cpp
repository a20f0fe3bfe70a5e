#include "bench/corpus/Exposure.h"

#include <QBuffer>
#include <QRandomGenerator>
#include <opencv2/imgproc.hpp>

#include <cmath>

namespace corpus {
namespace {

/// Width of the shadow beside a gutter, in millimetres.
constexpr double gutterMm = 18;

cv::Mat view(QImage &image)
{
    return {image.height(), image.width(), CV_8UC4, image.bits(), size_t(image.bytesPerLine())};
}

void displace(cv::Mat page, double pixels)
{
    for (const auto &[channel, shift] : {std::pair(0, pixels), std::pair(2, -pixels)}) {
        cv::Mat plane;
        cv::extractChannel(page, plane, channel);
        const cv::Matx23d way(1, 0, shift, 0, 1, 0);
        cv::warpAffine(plane, plane, way, plane.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
        cv::insertChannel(plane, page, channel);
    }
}

void light(cv::Mat page, const Exposure &exposure, double pixelsPerMm)
{
    cv::Mat row(1, page.cols, CV_8UC4);
    const double blue = 1 - exposure.warmth;
    for (int y = 0; y < page.rows; ++y) {
        for (int x = 0; x < page.cols; ++x) {
            const double corner = (double(x) / page.cols + double(y) / page.rows) / 2;
            const double shadow = std::exp(-x / (gutterMm / 3 * pixelsPerMm));
            const double level =
                255 * (1 - exposure.falloff * corner * corner) * (1 - exposure.gutter * shadow);
            row.at<cv::Vec4b>(x) = {cv::saturate_cast<uchar>(level * blue),
                                    cv::saturate_cast<uchar>(level * (1 - exposure.warmth / 4)),
                                    cv::saturate_cast<uchar>(level), 255};
        }
        cv::Mat target = page.row(y);
        cv::multiply(target, row, target, 1 / 255.0);
    }
}

QImage throughJpeg(const QImage &image, int quality)
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    image.save(&buffer, "jpeg", quality);
    QImage result = QImage::fromData(buffer.data()).convertToFormat(image.format());
    result.setDotsPerMeterX(image.dotsPerMeterX());
    result.setDotsPerMeterY(image.dotsPerMeterY());
    return result;
}

} // namespace

QImage softened(const QImage &sheet, const Exposure &exposure)
{
    QImage image = sheet;
    cv::Mat page = view(image);
    if (exposure.blurMm > 0)
        cv::GaussianBlur(page, page, {}, exposure.blurMm * sheet.dotsPerMeterX() / 1000.0);
    if (exposure.fringePixels > 0)
        displace(page, exposure.fringePixels);
    return image;
}

QImage exposed(const QImage &sheet, const Exposure &exposure)
{
    QImage image = softened(sheet, exposure);
    cv::Mat page = view(image);
    light(page, exposure, sheet.dotsPerMeterX() / 1000.0);
    if (exposure.noise > 0) {
        cv::Mat noise(page.size(), CV_8SC4);
        cv::RNG(exposure.seed).fill(noise, cv::RNG::NORMAL, 0, exposure.noise);
        cv::add(page, noise, page, cv::noArray(), CV_8U);
    }
    if (exposure.isGrey)
        image.convertTo(QImage::Format_Grayscale8);
    return exposure.jpegQuality > 0 ? throughJpeg(image, exposure.jpegQuality) : image;
}

Exposure exposureOf(quint32 seed)
{
    QRandomGenerator random(seed);
    const auto amountUpTo = [&](double most) {
        return most * random.generateDouble();
    };
    const auto sometimes = [&](double most) {
        return random.bounded(3) == 0 ? amountUpTo(most) : 0;
    };
    Exposure exposure;
    exposure.blurMm = 0.03 + amountUpTo(0.05);
    exposure.noise = 1 + amountUpTo(3);
    exposure.falloff = sometimes(0.25);
    exposure.gutter = sometimes(0.45);
    exposure.warmth = sometimes(0.15);
    exposure.fringePixels = sometimes(0.8);
    exposure.jpegQuality = random.bounded(3) == 0 ? 75 + int(random.bounded(20)) : 0;
    exposure.isGrey = random.bounded(8) == 0;
    exposure.seed = random.generate();
    return exposure;
}

} // namespace corpus
