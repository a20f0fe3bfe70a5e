#include "TestImages.h"

#include <QBuffer>
#include <QDataStream>
#include <QDateTime>
#include <QFile>
#include <QImageWriter>
#include <gtest/gtest.h>

#include <cmath>

namespace scanengine {

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
    QByteArray file("II*\0\x08\0\0\0", 8);
    QDataStream out(&file, QIODevice::Append);
    out.setByteOrder(QDataStream::LittleEndian);
    for (qsizetype page = 0; page < levels.size(); ++page) {
        // The directory of a page, then its two resolutions and its pixels.
        const quint32 resolutions = quint32(file.size()) + 2 + 8 * 12 + 4;
        const quint32 pixels = resolutions + 16;
        const quint32 next = page + 1 < levels.size() ? pixels + side * side : 0;
        const quint32 tags[][3] = {
            {256, 3, side           },
            {257, 3, side           },
            {258, 3, 8              },
            {262, 3, 1              },
            {273, 4, pixels         },
            {279, 4, side * side    },
            {282, 5, resolutions    },
            {283, 5, resolutions + 8},
        };
        out << quint16(std::size(tags));
        for (const auto &[number, type, value] : tags)
            out << quint16(number) << quint16(type) << quint32(1) << value;
        out << next << quint32(204) << quint32(1) << quint32(98) << quint32(1);
        const QByteArray picture(side * side, char(levels[page]));
        out.writeRawData(picture.constData(), int(picture.size()));
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
