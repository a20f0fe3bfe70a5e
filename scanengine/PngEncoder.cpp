#include "scanengine/PngEncoder.h"

#include <QIODevice>
#include <QSysInfo>

#include <csetjmp>
#include <cstdio>
#include <png.h>
#include <zlib.h>

namespace scanengine {
namespace {

/// The files are read once or twice and then removed: time counts, not size. Runs are what zlib
/// finds quickest, and the difference from the row above makes runs of paper and of edges alike.
constexpr int compressionLevel = 1;
constexpr int compressionStrategy = Z_RLE;
constexpr int rowFilter = PNG_FILTER_UP;
constexpr std::size_t bytesAtOnce = 1 << 18;

/// How the rows of an image are stored in the file.
struct Layout {
    int bits = 8;
    int color = PNG_COLOR_TYPE_GRAY;
    bool isInverted = false; ///< Of one bit, with 0 for white.
    bool hasSpareByte = false;
};

Layout layoutOf(const QImage &image)
{
    switch (image.format()) {
    case QImage::Format_Mono:
        return {1, PNG_COLOR_TYPE_GRAY, image.color(0) == qRgb(255, 255, 255), false};
    case QImage::Format_Grayscale8:
        return {};
    default:
        return {8, PNG_COLOR_TYPE_RGB, false, true};
    }
}

/// The same pixels in one of the formats that `layoutOf` knows.
QImage storable(const QImage &image)
{
    static const QList<QRgb> blackFirst = {qRgb(0, 0, 0), qRgb(255, 255, 255)};
    static const QList<QRgb> whiteFirst = {qRgb(255, 255, 255), qRgb(0, 0, 0)};
    const QList<QRgb> colors = image.colorTable();
    if (image.depth() == 1 && (colors == blackFirst || colors == whiteFirst))
        return image.convertToFormat(QImage::Format_Mono);
    if (image.format() == QImage::Format_Grayscale8)
        return image;
    return image.convertToFormat(QImage::Format_RGB32);
}

void passOn(png_structp png, png_bytep data, png_size_t size)
{
    auto *target = static_cast<QIODevice *>(png_get_io_ptr(png));
    if (target->write(reinterpret_cast<const char *>(data), qint64(size)) != qint64(size))
        png_error(png, "the target takes no more");
}

void ignoreFlush(png_structp) {}
void ignoreWarning(png_structp, png_const_charp) {}

[[noreturn]] void giveUp(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

/// The library leaves this function by a jump when it fails, past the destructors of whatever lives
/// here: so nothing does that has one.
bool writeRows(png_structp png, png_infop info, const QImage &image, const Layout &layout)
{
    if (setjmp(png_jmpbuf(png)) != 0)
        return false;
    png_set_compression_level(png, compressionLevel);
    png_set_compression_strategy(png, compressionStrategy);
    png_set_compression_buffer_size(png, bytesAtOnce);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, layout.bits == 8 ? rowFilter : PNG_FILTER_NONE);
    png_set_IHDR(png, info, png_uint_32(image.width()), png_uint_32(image.height()), layout.bits,
                 layout.color, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png, info, png_uint_32(image.dotsPerMeterX()), png_uint_32(image.dotsPerMeterY()),
                 PNG_RESOLUTION_METER);
    png_write_info(png, info);
    if (layout.isInverted)
        png_set_invert_mono(png);
    if (layout.hasSpareByte) {
        if (QSysInfo::ByteOrder == QSysInfo::LittleEndian)
            png_set_bgr(png);
        png_set_filler(png, 0,
                       QSysInfo::ByteOrder == QSysInfo::LittleEndian ? PNG_FILLER_AFTER
                                                                     : PNG_FILLER_BEFORE);
    }
    for (int y = 0; y < image.height(); ++y)
        png_write_row(png, image.constScanLine(y));
    png_write_end(png, info);
    return true;
}

} // namespace

bool writePng(const QImage &image, QIODevice &target)
{
    const QImage pixels = storable(image);
    if (pixels.isNull())
        return false;
    png_structp png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, giveUp, ignoreWarning);
    if (png == nullptr)
        return false;
    png_infop info = png_create_info_struct(png);
    bool isWritten = false;
    if (info != nullptr) {
        png_set_write_fn(png, &target, passOn, ignoreFlush);
        isWritten = writeRows(png, info, pixels, layoutOf(pixels));
    }
    png_destroy_write_struct(&png, &info);
    return isWritten;
}

} // namespace scanengine
