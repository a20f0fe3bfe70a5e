#include "pipeline/RawStore.h"

#include "tests/pipeline/TestPages.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace velmor {
namespace {

class RawStoreTest : public testing::Test {
protected:
    QString path(const QString &name) const { return root.filePath(name); }
    QUrl pdf(const QString &name) const { return QUrl::fromLocalFile(path(name)); }

    /// Page images as an engine leaves them, each with its own content.
    QStringList pages(const QByteArrayList &contents) const
    {
        QStringList paths;
        for (const QByteArray &content : contents)
            paths.append(
                writeFile(path(QString::fromUtf8(content) + QStringLiteral(".jpg")), content));
        return paths;
    }

    QByteArray rawPage(const QUrl &document, int page) const
    {
        const auto location = RawStore::pageURL(document, page);
        return location ? readFile(location->toLocalFile()) : QByteArray("none");
    }

    QTemporaryDir folder;
    QDir root{folder.path()};
};

TEST_F(RawStoreTest, ASidecarIsNamedAfterTheStemOfItsPdf)
{
    const auto sidecar = [](const QString &pdf) {
        return RawStore::dir(QUrl::fromLocalFile(pdf)).toLocalFile();
    };
    EXPECT_EQ(sidecar(QStringLiteral("/a/x.y.pdf")), QStringLiteral("/a/.velmor_raw/x.y/"));
    EXPECT_EQ(sidecar(QStringLiteral("/b/ü #1%20?.pdf")),
              QStringLiteral("/b/.velmor_raw/ü #1%20?/"));
}

TEST_F(RawStoreTest, PagesMoveInAndReplaceFormerOnes)
{
    const QUrl document = pdf(QStringLiteral("Scan.pdf"));
    RawStore::adopt(pages({"a", "b", "c"}), document);
    EXPECT_EQ(RawStore::pageCount(document), 3);
    EXPECT_FALSE(root.exists(QStringLiteral("a.jpg")));

    RawStore::adopt(pages({"d", "e"}), document);
    EXPECT_EQ(RawStore::pageCount(document), 2);
    EXPECT_EQ(rawPage(document, 0), "d");
    EXPECT_EQ(rawPage(document, 1), "e");
    EXPECT_EQ(rawPage(document, 2), "none");
    EXPECT_EQ(rawPage(document, -1), "none");

    RawStore::adopt({}, document);
    EXPECT_EQ(RawStore::pageCount(document), 0);
    EXPECT_TRUE(QFileInfo(RawStore::dir(document).toLocalFile()).isDir());
    RawStore::remove(document);
    EXPECT_FALSE(QFileInfo::exists(RawStore::dir(document).toLocalFile()));
}

TEST_F(RawStoreTest, APageThatCannotBeMovedLeavesAGap)
{
    const QUrl document = pdf(QStringLiteral("Scan.pdf"));
    QStringList images = pages({"a", "b"});
    images.insert(1, path(QStringLiteral("missing.png")));
    RawStore::adopt(images, document);
    EXPECT_EQ(RawStore::pageCount(document), 2);
    EXPECT_EQ(rawPage(document, 1), "none");
    EXPECT_EQ(rawPage(document, 2), "b");
}

TEST_F(RawStoreTest, OnlyLowerCasePngNamesCount)
{
    const QUrl document = pdf(QStringLiteral("Scan.pdf"));
    RawStore::adopt(pages({"a"}), document);
    const QDir sidecar(RawStore::dir(document).toLocalFile());
    for (const char *name : {"page_002.PNG", "page_003.jpg", ".hidden.png", "notes.png.txt"})
        writeFile(sidecar.filePath(QString::fromUtf8(name)), "x");
    EXPECT_EQ(RawStore::pageCount(document), 2);
}

TEST_F(RawStoreTest, WhatIsNoImageOfSaneSizeIsRefused)
{
    const QString fifo = path(QStringLiteral("fifo.png"));
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString huge = writeFile(path(QStringLiteral("huge.png")), hugePng());
    for (const QString &image : {huge, fifo, folder.path(), QStringLiteral("/dev/zero")})
        EXPECT_FALSE(RawStore::image(QUrl::fromLocalFile(image))) << qPrintable(image);
}

} // namespace
} // namespace velmor
