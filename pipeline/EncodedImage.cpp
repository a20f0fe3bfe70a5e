#include "pipeline/EncodedImage.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace velmor {

namespace {

/// Longest side in pixels that libjpeg writes.
constexpr int maxJpegSide = 65'500;

int channelCount(const QImage &paper)
{
    return paper.format() == QImage::Format_Grayscale8 ? 1 : 3;
}

/// What a JPEG file says of itself, gathered marker by marker.
struct JpegHeader {
    QSize size;
    int bits = 0;
    int channels = 0;
    bool adobe = false;
};

/// Markers 0xC0 to 0xCF begin a frame, but for the three that mean tables.
bool beginsFrame(int marker)
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Reads the segments up to the frame header (ITU T.81, annex B).
std::optional<JpegHeader> jpegHeader(const QByteArray &file)
{
    const auto byte = [&file](qsizetype at) {
        return static_cast<uchar>(file[at]);
    };
    const auto word = [&byte](qsizetype at) {
        return byte(at) << 8 | byte(at + 1);
    };
    if (file.size() < 4 || word(0) != 0xFFD8)
        return std::nullopt;

    JpegHeader header;
    qsizetype at = 2;
    while (at + 10 <= file.size()) {
        if (byte(at) != 0xFF)
            return std::nullopt;
        const int marker = byte(at + 1);
        if (marker == 0xFF) { // fill bytes may stand before a marker
            ++at;
            continue;
        }
        if (beginsFrame(marker)) {
            header.bits = byte(at + 4);
            header.size = QSize(word(at + 7), word(at + 5));
            header.channels = byte(at + 9);
            const bool supported = marker <= 0xC2 && header.bits == 8 && !header.size.isEmpty();
            return supported ? std::optional(header) : std::nullopt;
        }
        if (marker == 0xEE && file.mid(at + 4, 5) == "Adobe")
            header.adobe = true;
        at += 2 + word(at + 2);
    }
    return std::nullopt;
}

} // namespace

QImage paperImage(const QImage &image)
{
    if (image.isNull())
        return {};
    if (image.hasAlphaChannel()) {
        QImage paper(image.size(), QImage::Format_RGB32);
        if (paper.isNull())
            return {};
        paper.fill(Qt::white);
        QPainter painter(&paper);
        painter.drawImage(0, 0, image);
        painter.end();
        return image.allGray() ? paper.convertToFormat(QImage::Format_Grayscale8) : paper;
    }
    switch (image.format()) {
    case QImage::Format_Grayscale8:
    case QImage::Format_RGB32:
        return image;
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
    case QImage::Format_Indexed8:
        return image.convertToFormat(image.allGray() ? QImage::Format_Grayscale8
                                                     : QImage::Format_RGB32);
    case QImage::Format_Grayscale16:
        return image.convertToFormat(QImage::Format_Grayscale8);
    default:
        return image.convertToFormat(QImage::Format_RGB32);
    }
}

std::optional<EncodedImage> jpegImage(const QImage &image, double quality)
{
    if (image.isNull() || std::max(image.width(), image.height()) > maxJpegSide)
        return std::nullopt;
    const QImage paper = paperImage(image);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(static_cast<int>(std::lround(quality * 100)));
    if (!writer.write(paper))
        return std::nullopt;
    return EncodedImage{EncodedImage::Filter::jpeg, bytes, paper.size(), channelCount(paper)};
}

std::optional<EncodedImage> losslessImage(const QImage &image)
{
    if (image.isNull())
        return std::nullopt;
    const QImage paper = paperImage(image);
    if (paper.isNull())
        return std::nullopt;
    const int channels = channelCount(paper);
    const QImage packed = channels == 1 ? paper : paper.convertToFormat(QImage::Format_RGB888);
    const qsizetype rowBytes = static_cast<qsizetype>(packed.width()) * channels;
    QByteArray rows(rowBytes * packed.height(), Qt::Uninitialized);
    for (int y = 0; y < packed.height(); ++y)
        std::memcpy(rows.data() + rowBytes * y, packed.constScanLine(y),
                    static_cast<size_t>(rowBytes));
    // qCompress puts the size in front, four bytes that a PDF must not get.
    return EncodedImage{EncodedImage::Filter::flate, qCompress(rows, 6).mid(4), packed.size(),
                        channels};
}

std::optional<EncodedImage> jpegFileImage(const QByteArray &file)
{
    const auto header = jpegHeader(file);
    if (!header || (header->channels != 1 && header->channels != 3 && header->channels != 4))
        return std::nullopt;
    const bool inverted = header->channels == 4 && header->adobe;
    return EncodedImage{EncodedImage::Filter::jpeg, file, header->size, header->channels, inverted};
}

} // namespace velmor
