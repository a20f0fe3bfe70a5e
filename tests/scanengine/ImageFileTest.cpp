#include "scanengine/imaging/ImageFile.h"

#include "TestImages.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <random>

namespace scanengine {
namespace {

constexpr int dotsPerMeterAt300 = 11811;

class ImageFileTest : public testing::Test {
protected:
    QString put(const QString &name, const QByteArray &content)
    {
        const QString path = m_folder.filePath(name);
        putFile(path, content);
        return path;
    }

    QImage read(const QString &name, const QByteArray &content)
    {
        const Result<QImage> page = readPage(put(name, content), 0);
        const Fault *fault = faultOf(page);
        EXPECT_FALSE(fault) << (fault ? fault->message.toStdString() : "");
        return fault ? QImage() : std::get<QImage>(page);
    }

    QTemporaryDir m_folder;
};

/// A page that no format can compress, so that half of its file is half of its picture.
QImage grain()
{
    QImage image = greyPage({64, 64}, 0, 300);
    std::minstd_rand random(1);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.scanLine(y)[x] = uchar(random());
    }
    return image;
}

/// `jpeg` with a whole JPEG file as the preview in its header.
QByteArray withPreview(const QByteArray &jpeg)
{
    const QByteArray preview = encoded(greyPage({8, 8}, 9, 300), "jpeg");
    const qsizetype length = preview.size() + 2;
    QByteArray segment("\xFF\xE1");
    segment += char(length / 256);
    segment += char(length % 256);
    return jpeg.left(2) + segment + preview + jpeg.mid(2);
}

TEST_F(ImageFileTest, AFileThatIsNoWholePictureIsAFaultThatSaysSo)
{
    const QByteArray png = encoded(grain(), "png");
    const QByteArray jpeg = encoded(grain(), "jpeg");
    const QByteArray tiff = greyTiff({10});
    const struct {
        const char *what;
        QByteArray content;
        const char *reason;
    } cases[] = {
        {"another kind of picture", encoded(grain(), "bmp"), "is not a PNG"},
        {"half a PNG", png.left(png.size() / 2), "is damaged"},
        {"half a JPEG", jpeg.left(jpeg.size() / 2), "is damaged"},
        {"half a JPEG with preview", withPreview(jpeg).left(jpeg.size()), "is damaged"},
        {"TIFF without its pages", tiff.left(60), "is damaged"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const Result<QImage> page = readPage(put(QStringLiteral("a.png"), c.content), 0);
        ASSERT_TRUE(faultOf(page));
        EXPECT_THAT(faultOf(page)->message.toStdString(), testing::HasSubstr(c.reason));
        EXPECT_THAT(faultOf(page)->message.toStdString(),
                    testing::StartsWith("The file \"a.png\""));
        QFile::remove(m_folder.filePath(QStringLiteral("a.png")));
    }
    EXPECT_TRUE(faultOf(countPages(m_folder.filePath(QStringLiteral("none.png")))));
}

TEST_F(ImageFileTest, AWholeJpegIsReadWhateverItsNameAndPreview)
{
    const QByteArray jpeg = encoded(greyPage({64, 64}, 120, 300), "jpeg");
    EXPECT_EQ(greyLevel(read(QStringLiteral("a.png"), jpeg)), 120);
    EXPECT_EQ(greyLevel(read(QStringLiteral("b.jpg"), withPreview(jpeg) + "trailer")), 120);
}

TEST_F(ImageFileTest, AResolutionThatMeansNothingCountsAs300)
{
    const std::pair<int, int> cases[] = {
        {0,                     dotsPerMeterAt300   }, // Then the PNG has none.
        {qRound(72 / 0.0254),   dotsPerMeterAt300   },
        {qRound(5000 / 0.0254), dotsPerMeterAt300   },
        {qRound(75 / 0.0254),   qRound(75 / 0.0254) },
        {qRound(600 / 0.0254),  qRound(600 / 0.0254)},
    };
    for (const auto &[stated, expected] : cases) {
        SCOPED_TRACE(stated);
        QImage image = greyPage({4, 4}, 1, 300);
        image.setDotsPerMeterX(stated);
        image.setDotsPerMeterY(stated);
        const QImage page = read(QStringLiteral("%1.png").arg(stated), encoded(image, "png"));
        EXPECT_EQ(page.dotsPerMeterX(), expected);
        EXPECT_EQ(page.dotsPerMeterY(), expected);
    }
}

TEST_F(ImageFileTest, EveryKindOfPixelBecomesPlainGreyOrColor)
{
    QImage halfRed(4, 4, QImage::Format_ARGB32);
    halfRed.fill(QColor(255, 0, 0, 128));
    QImage bits(9, 9, QImage::Format_Mono);
    bits.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    bits.fill(1);
    QImage palette(9, 9, QImage::Format_Indexed8);
    palette.setColorTable({qRgb(9, 9, 9), qRgb(0, 90, 200)});
    palette.fill(1);
    const struct {
        const char *what;
        QImage image;
        QImage::Format format;
        QColor color;
    } cases[] = {
        {"transparent", halfRed, QImage::Format_RGB32, QColor(255, 127, 127)},
        {"bits", bits, QImage::Format_Grayscale8, QColor(0, 0, 0)},
        {"palette", palette, QImage::Format_RGB32, QColor(0, 90, 200)},
        {"deep", greyPage({4, 4}, 77, 300).convertToFormat(QImage::Format_Grayscale16),
         QImage::Format_Grayscale8, QColor(77, 77, 77)},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QImage page = read(QString::fromUtf8(c.what), encoded(c.image, "png"));
        EXPECT_EQ(page.format(), c.format);
        EXPECT_EQ(page.pixelColor(2, 2), c.color);
    }
}

} // namespace
} // namespace scanengine
