#include "pipeline/PageRaster.h"

#include "pipeline/RawStore.h"
#include "pipeline/Renderer.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmor::PageRaster {

namespace {

std::optional<QImage> renderAtScale(const PdfPage &page, double scale)
{
    const QSizeF size = page.displayedSize() * std::min(scale, maxScale);
    if (!(size.width() * size.height() <= static_cast<double>(RawStore::maxPixels)))
        return std::nullopt;
    const QSize pixels(std::max(1, static_cast<int>(std::lround(size.width()))),
                       std::max(1, static_cast<int>(std::lround(size.height()))));
    const auto bytes = page.renderingBytes();
    if (!bytes)
        return std::nullopt;
    return Renderer::shared().picture(*bytes, pixels);
}

using LevelsTable = std::array<uchar, 256>;

LevelsTable levelsTable(double black, double white, double gamma)
{
    const double lo = std::min(black, white);
    const double hi = std::max(std::max(black, white), lo + 0.01);
    const double s = 1 / std::max(hi - lo, 0.01);
    LevelsTable table{};
    for (size_t i = 0; i < table.size(); ++i) {
        const double v = static_cast<double>(i) / 255;
        const double base = s * (v - lo);
        const double out = base > 0 ? std::pow(base, gamma) : 0;
        table[i] = static_cast<uchar>(std::lround(255 * std::min(out, 1.0)));
    }
    return table;
}

QRgb levelled(QRgb pixel, const LevelsTable &table)
{
    return qRgba(table[static_cast<size_t>(qRed(pixel))], table[static_cast<size_t>(qGreen(pixel))],
                 table[static_cast<size_t>(qBlue(pixel))], qAlpha(pixel));
}

/// A form with 8 bits a channel, colours not multiplied by alpha.
QImage byteImage(const QImage &image)
{
    if (image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_RGB32 ||
        image.format() == QImage::Format_ARGB32)
        return image;
    if (image.hasAlphaChannel())
        return image.convertToFormat(QImage::Format_ARGB32);
    const bool grey = image.format() == QImage::Format_Grayscale16 ||
                      (image.colorCount() > 0 && image.isGrayscale());
    return image.convertToFormat(grey ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
}

} // namespace

std::optional<QImage> render(const PdfPage &page, MaxDim maxDim)
{
    const QSizeF size = page.displayedSize();
    return renderAtScale(page, maxDim.pixels / std::max(size.width(), size.height()));
}

std::optional<QImage> render(const PdfPage &page, Dpi dpi)
{
    return renderAtScale(page, dpi.value / 72);
}

std::optional<QImage> render(const PdfPage &page, const QRectF &part, QSize pixels)
{
    if (pixels.isEmpty() || qint64{pixels.width()} * pixels.height() > RawStore::maxPixels)
        return std::nullopt;
    const auto bytes = page.renderingBytes(part);
    if (!bytes)
        return std::nullopt;
    return Renderer::shared().picture(*bytes, pixels, Renderer::Use::glimpse);
}

std::optional<QImage> downscale(const QImage &image, double maxDim)
{
    if (image.isNull())
        return std::nullopt;
    const double scale = std::min(1.0, maxDim / std::max(image.width(), image.height()));
    if (scale >= 1)
        return image;
    const QSize size(std::max(static_cast<int>(image.width() * scale), 1),
                     std::max(static_cast<int>(image.height() * scale), 1));
    const QImage source = image.convertToFormat(
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    QImage reduced = source.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (reduced.isNull())
        return std::nullopt;
    return reduced;
}

std::optional<QImage> applyLevels(const QImage &image, double black, double white, double gamma)
{
    QImage result = byteImage(image);
    if (result.isNull())
        return std::nullopt;
    const LevelsTable table = levelsTable(black, white, gamma);
    const bool grey = result.format() == QImage::Format_Grayscale8;
    for (int y = 0; y < result.height(); ++y) {
        uchar *line = result.scanLine(y);
        if (grey) {
            std::transform(line, line + result.width(), line, [&](uchar v) { return table[v]; });
        } else {
            auto *pixels = reinterpret_cast<QRgb *>(line);
            std::transform(pixels, pixels + result.width(), pixels,
                           [&](QRgb pixel) { return levelled(pixel, table); });
        }
    }
    return result;
}

} // namespace velmor::PageRaster
