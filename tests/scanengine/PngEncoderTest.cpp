#include "scanengine/PngEncoder.h"

#include <QBuffer>
#include <gtest/gtest.h>

namespace scanengine {
namespace {

/// Every level and many colours, over a width that fills no last byte of bits.
QImage pattern(QImage::Format format)
{
    QImage image(261, 19, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x % 256, (x * 7 + y * 31) % 256, (y * 13) % 256));
    }
    image = image.convertToFormat(format, Qt::MonoOnly | Qt::ThresholdDither);
    image.setDotsPerMeterX(11811);
    image.setDotsPerMeterY(7874);
    return image;
}

QImage swappedColors(QImage image)
{
    image.setColorTable({image.color(1), image.color(0)});
    return image;
}

TEST(PngEncoder, EveryPixelAndTheResolutionComeBack)
{
    const QImage bits = pattern(QImage::Format_Mono);
    const QImage grey = pattern(QImage::Format_Grayscale8);
    const struct {
        QImage image;
        QImage::Format stored;
    } cases[] = {
        {bits, QImage::Format_Mono},
        {swappedColors(bits), QImage::Format_Mono},
        {pattern(QImage::Format_MonoLSB), QImage::Format_Mono},
        {grey, QImage::Format_Grayscale8},
        {grey.copy(3, 2, 17, 1), QImage::Format_Grayscale8},
        {pattern(QImage::Format_RGB32), QImage::Format_RGB32},
        {pattern(QImage::Format_RGB888), QImage::Format_RGB32},
        {pattern(QImage::Format_Indexed8), QImage::Format_RGB32},
    };
    for (const auto &[image, stored] : cases) {
        QBuffer file;
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(writePng(image, file)) << image.format();
        const QImage read = QImage::fromData(file.data(), "png");
        EXPECT_EQ(read.convertToFormat(QImage::Format_RGB32),
                  image.convertToFormat(QImage::Format_RGB32))
            << image.format();
        EXPECT_EQ(read.dotsPerMeterX(), image.dotsPerMeterX());
        EXPECT_EQ(read.dotsPerMeterY(), image.dotsPerMeterY());
        EXPECT_EQ(read.format(), stored) << image.format();
    }
}

/// Takes `room` bytes, like a disk that fills up.
class FullDisk : public QIODevice {
public:
    explicit FullDisk(qint64 room) : m_room(room) { open(WriteOnly | Unbuffered); }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 size) override
    {
        if (size > m_room)
            return -1;
        m_room -= size;
        return size;
    }

private:
    qint64 m_room;
};

TEST(PngEncoder, ATargetThatFillsUpIsToldWhereverThatIs)
{
    QBuffer whole;
    ASSERT_TRUE(whole.open(QIODevice::WriteOnly));
    const QImage page = pattern(QImage::Format_RGB32);
    ASSERT_TRUE(writePng(page, whole));
    for (const qint64 room : {qint64(0), qint64(20), whole.size() / 2, whole.size() - 1}) {
        FullDisk disk(room);
        EXPECT_FALSE(writePng(page, disk)) << room;
    }
    EXPECT_FALSE(writePng(QImage(), whole));
}

} // namespace
} // namespace scanengine
