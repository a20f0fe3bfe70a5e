#include "browser/Thumbnail.h"

#include "tests/pipeline/TestPages.h"

#include <QDirIterator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace velmor {
namespace {

TEST(Thumbnail, TheCellHasTheShapeOfTheFirstPageAsShown)
{
    const struct {
        QSizeF page;
        int rotation;
        double width, ratio;
        QSize pixels;
    } cases[] = {
        {{200, 300},  0,   150, 1.5,     {440, 660} },
        {{200, 300},  90,  150, 2.0 / 3, {440, 293} },
        {{200, 300},  180, 150, 1.5,     {440, 660} },
        {{200, 300},  0,   260, 1.5,     {520, 780} },
        {{100, 1000}, 0,   150, 3.4,     {150, 1496}},
        {{1000, 100}, 0,   150, 0.3,     {440, 44}  },
    };
    QTemporaryDir folder;
    const QUrl url = QUrl::fromLocalFile(folder.filePath(QStringLiteral("a.pdf")));
    for (const auto &c : cases) {
        PdfPage page = plainPage(c.page, 0);
        page.setRotation(c.rotation);
        PdfDocument document;
        ASSERT_TRUE(document.insertPage(page, 0));
        writeFile(url.toLocalFile(), document.bytes().value());
        const auto thumbnail = renderThumbnail(url, c.width);
        ASSERT_TRUE(thumbnail);
        EXPECT_NEAR(thumbnail->ratio, c.ratio, 1e-9);
        EXPECT_NEAR(thumbnail->image.width(), c.pixels.width(), 1);
        EXPECT_NEAR(thumbnail->image.height(), c.pixels.height(), 1);
        EXPECT_EQ(thumbnail->image.pixelColor(thumbnail->image.rect().center()), Qt::black);
    }
    EXPECT_DOUBLE_EQ(Thumbnail::ratioOf({0, 2}), 2);
}

TEST(Thumbnail, DamagedFilesHaveOneOrNone)
{
    for (QDirIterator set(QStringLiteral(DAMAGED_FILES), QDir::Files); set.hasNext();) {
        const QString path = set.next();
        const auto thumbnail = renderThumbnail(QUrl::fromLocalFile(path), 150);
        if (thumbnail) {
            EXPECT_FALSE(thumbnail->image.isNull()) << qPrintable(path);
            EXPECT_LE(thumbnail->image.width(), 440) << qPrintable(path);
        }
    }
}

} // namespace
} // namespace velmor
