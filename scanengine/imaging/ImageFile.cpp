#include "scanengine/imaging/ImageFile.h"

#include "scanengine/imaging/JpegEnd.h"
#include "scanengine/imaging/PixelLimit.h"

#include <QColorSpace>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <cmath>
#include <utility>

namespace scanengine {
namespace {

constexpr double dotsPerMeterPerDpi = 1 / 0.0254;
constexpr double dpiWhereNoneIsStated = 300;
/// The most memory that one decoded image may take, in MB: `maxPixels` at 8 bytes.
constexpr int decodingMegabytes = 2400;

Fault fault(const QString &path, const QString &reason)
{
    return {QStringLiteral("The file \"%1\" %2").arg(QFileInfo(path).fileName(), reason)};
}

Fault damaged(const QString &path)
{
    return fault(path, QStringLiteral("is damaged or incomplete. Save or copy it again, or take it "
                                      "out of the folder."));
}

Fault tooLarge(const QString &path)
{
    return fault(path, QStringLiteral("holds a picture too large to read: more than 300 million "
                                      "pixels. Save it smaller, or take it out of the folder."));
}

/// Opens `file` for `reader` and answers its kind as Qt calls it, or why it is none of the three.
Result<QByteArray> open(QFile &file, QImageReader &reader)
{
    if (!file.open(QIODevice::ReadOnly))
        return fault(file.fileName(),
                     QStringLiteral("can't be opened: %1.").arg(file.errorString()));
    if (file.size() == 0)
        return fault(file.fileName(), QStringLiteral("is empty. Save or copy it again, or take it "
                                                     "out of the folder."));
    reader.setDevice(&file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    QByteArray kind = reader.format();
    if (kind != "png" && kind != "jpeg" && kind != "tiff")
        return fault(file.fileName(),
                     QStringLiteral("is not a PNG, JPEG or TIFF picture. Take it out of the "
                                    "folder."));
    return kind;
}

bool isGrey(const QImage &image)
{
    if (image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_Grayscale16)
        return true;
    const QList<QRgb> colors = image.colorTable();
    return !colors.isEmpty() && std::all_of(colors.begin(), colors.end(), [](QRgb color) {
        return color == qRgb(qRed(color), qRed(color), qRed(color));
    });
}

/// Lays transparent pixels on white, one row at a time: no second image is needed.
void layOnWhite(QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        auto *pixel = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (const QRgb *end = pixel + image.width(); pixel != end; ++pixel) {
            const int white = 255 - qAlpha(*pixel);
            *pixel = qRgb(qRed(*pixel) + white, qGreen(*pixel) + white, qBlue(*pixel) + white);
        }
    }
}

/// One of the two formats that the rest of the engine knows, or a null image if memory ran out.
QImage inPlainFormat(QImage image)
{
    if (isGrey(image)) {
        image.convertTo(QImage::Format_Grayscale8);
    } else if (image.hasAlphaChannel()) {
        image.convertTo(QImage::Format_ARGB32_Premultiplied);
        layOnWhite(image);
        image.convertTo(QImage::Format_RGB32);
    } else {
        image.convertTo(QImage::Format_RGB32);
    }
    if (image.format() == QImage::Format_RGB32 && image.colorSpace().isValid())
        image.convertToColorSpace(QColorSpace::SRgb);
    image.setColorSpace({});
    return image;
}

int statedDotsPerMeter(int dotsPerMeter)
{
    // What an image says of which the file said nothing.
    static const int unstated = QImage(1, 1, QImage::Format_Mono).dotsPerMeterX();
    const double dpi = dotsPerMeter / dotsPerMeterPerDpi;
    const bool isPlaceholder = std::lround(dpi) == 72 || std::lround(dpi) == 96;
    if (dotsPerMeter == unstated || isPlaceholder || dpi < 30 || dpi > 4800)
        return int(std::lround(dpiWhereNoneIsStated * dotsPerMeterPerDpi));
    return dotsPerMeter;
}

} // namespace

Result<int> countPages(const QString &path)
{
    QFile file(path);
    QImageReader reader;
    const Result<QByteArray> kind = open(file, reader);
    if (const Fault *reason = faultOf(kind))
        return *reason;
    return std::max(1, reader.imageCount());
}

Result<QImage> readPage(const QString &path, int page)
{
    QFile file(path);
    QImageReader reader;
    const Result<QByteArray> kind = open(file, reader);
    if (const Fault *reason = faultOf(kind))
        return *reason;
    if (page > 0 && !reader.jumpToImage(page))
        return damaged(path);
    const QSize size = reader.size();
    if (size.isEmpty())
        return damaged(path);
    if (!isWithinPixelLimit(size))
        return tooLarge(path);

    QImageReader::setAllocationLimit(decodingMegabytes);
    QImage image = reader.read();
    const bool isWhole = std::get<QByteArray>(kind) != "jpeg" || endsLikeJpeg(file);
    if (image.isNull() || !isWhole)
        return damaged(path);
    image = inPlainFormat(std::move(image));
    if (image.isNull())
        return tooLarge(path);
    image.setDotsPerMeterX(statedDotsPerMeter(image.dotsPerMeterX()));
    image.setDotsPerMeterY(statedDotsPerMeter(image.dotsPerMeterY()));
    return image;
}

} // namespace scanengine
