#include "pipeline/EncodedImage.h"

#include "tests/pipeline/TestPages.h"

#include <QBuffer>
#include <gtest/gtest.h>

namespace velmor {
namespace {

QByteArray jpegFile(const QImage &image)
{
    QBuffer buffer;
    EXPECT_TRUE(image.save(&buffer, "JPEG", 90));
    return buffer.data();
}

TEST(EncodedImage, AJpegHasAsManyChannelsAsItsImageNeeds)
{
    QImage transparent(20, 10, QImage::Format_ARGB32);
    transparent.fill(QColor(255, 0, 0, 0));
    transparent.setPixelColor(0, 0, Qt::blue);
    const struct {
        const char *what;
        QImage image;
        int channels;
    } cases[] = {
        {"grey",        noise({20, 10}),                                             1},
        {"16-bit grey", noise({20, 10}).convertToFormat(QImage::Format_Grayscale16), 1},
        {"colour",      noise({20, 10}).convertToFormat(QImage::Format_RGB32),       3},
        {"transparent", transparent,                                                 3},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const auto encoded = jpegImage(c.image, 0.85);
        ASSERT_TRUE(encoded);
        EXPECT_EQ(encoded->channels, c.channels);
        EXPECT_EQ(encoded->size, QSize(20, 10));
        const QImage decoded = QImage::fromData(encoded->bytes, "JPEG");
        EXPECT_EQ(decoded.size(), QSize(20, 10));
        EXPECT_EQ(qGray(decoded.pixel(19, 9)) > 250, c.image.hasAlphaChannel());
    }
    EXPECT_FALSE(jpegImage(QImage(), 0.85));
    EXPECT_FALSE(jpegImage(QImage(65'501, 1, QImage::Format_Grayscale8), 0.85));
}

TEST(EncodedImage, AJpegFileIsTakenByteForByteAndOthersAreNot)
{
    const QByteArray grey = jpegFile(noise({30, 20}));
    const auto taken = jpegFileImage(grey);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->bytes, grey);
    EXPECT_EQ(taken->size, QSize(30, 20));
    EXPECT_EQ(taken->channels, 1);
    EXPECT_EQ(
        jpegFileImage(jpegFile(noise({3, 2}).convertToFormat(QImage::Format_RGB32)))->channels, 3);

    for (const QByteArray &file :
         {QByteArray(), QByteArray("\xff\xd8"), QByteArray("\xff\xd8\xff\xe0\x00\x00", 6),
          QByteArray("\xff\xd8\xff\xe0\xff\xff", 6), grey.left(60), QByteArray("no JPEG at all")})
        EXPECT_FALSE(jpegFileImage(file)) << file.toHex().constData();
}

} // namespace
} // namespace velmor
