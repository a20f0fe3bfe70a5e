#include "TestImages.h"

#include <QBuffer>
#include <QDateTime>
#include <QFile>
#include <QImageWriter>
#include <QtEndian>
#include <gtest/gtest.h>

#include <cmath>

namespace scanengine {
namespace {

void append16(QByteArray &bytes, quint16 value)
{
    const quint16 little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

void append32(QByteArray &bytes, quint32 value)
{
    const quint32 little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

struct TiffTag {
    enum Type : quint16 { shortNumber = 3, longNumber = 4, rational = 5 };
    quint16 number;
    Type type;
    quint32 value; ///< The number, or where the rational lies in the file.
};

} // namespace

QImage greyPage(QSize size, int level, int dpi)
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(QColor(level, level, level));
    image.setDotsPerMeterX(int(std::lround(dpi / 0.0254)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    return image;
}

QByteArray encoded(const QImage &image, const char *format)
{
    QBuffer buffer;
    EXPECT_TRUE(QImageWriter(&buffer, format).write(image));
    return buffer.data();
}

QByteArray greyTiff(const QList<int> &levels)
{
    constexpr quint32 side = 8;
    constexpr quint32 headerBytes = 8;
    constexpr quint32 pixelBytes = side * side;
    QByteArray file("II*\0", 4);
    append32(file, headerBytes + 16 + pixelBytes);
    for (const int &level : levels) {
        const auto start = quint32(file.size());
        for (const quint32 number : {204U, 1U, 98U, 1U})
            append32(file, number);
        file.append(qsizetype(pixelBytes), char(level));
        const TiffTag tags[] = {
            {256, TiffTag::shortNumber, side      },
            {257, TiffTag::shortNumber, side      },
            {258, TiffTag::shortNumber, 8         },
            {259, TiffTag::shortNumber, 1         },
            {262, TiffTag::shortNumber, 1         },
            {273, TiffTag::longNumber,  start + 16},
            {277, TiffTag::shortNumber, 1         },
            {278, TiffTag::shortNumber, side      },
            {279, TiffTag::longNumber,  pixelBytes},
            {282, TiffTag::rational,    start     },
            {283, TiffTag::rational,    start + 8 },
            {296, TiffTag::shortNumber, 2         },
        };
        append16(file, std::size(tags));
        for (const TiffTag &tag : tags) {
            append16(file, tag.number);
            append16(file, tag.type);
            append32(file, 1);
            append32(file, tag.value);
        }
        const bool isLast = &level == &levels.back();
        append32(file, isLast ? 0 : quint32(file.size()) + 4 + 16 + pixelBytes);
    }
    return file;
}

QByteArray hugePng()
{
    return QByteArray::fromHex("89504e470d0a1a0a0000000d49484452"
                               "0000ea600000ea600800000000a5b92a9e"
                               "000000004944415435af061e");
}

void putFile(const QString &path, const QByteArray &content)
{
    // The engine looks at this folder: the file appears under its name when it is whole and old.
    QFile file(path + QStringLiteral(".new"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
    ASSERT_TRUE(file.flush());
    const QDateTime aMinuteAgo = QDateTime::currentDateTime().addSecs(-60);
    ASSERT_TRUE(file.setFileTime(aMinuteAgo, QFileDevice::FileModificationTime));
    file.close();
    ASSERT_TRUE(file.rename(path));
}

int greyLevel(const QImage &image)
{
    const QColor color = image.pixelColor(image.width() / 2, image.height() / 2);
    return color.red() == color.green() && color.green() == color.blue() ? color.red() : -1;
}

} // namespace scanengine
