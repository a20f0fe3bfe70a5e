#include "scanengine/PageFiles.h"

#include "TestImages.h"
#include "scanengine/PngFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <thread>

namespace scanengine {
namespace {

class PageFilesTest : public testing::Test {
protected:
    [[nodiscard]] QStringList names() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir m_folder;
    QImage m_page = greyPage({8, 8}, 50, 600);
};

TEST_F(PageFilesTest, PagesAreNumberedBesideTheOutputPath)
{
    PageFiles pages(m_folder.filePath(QStringLiteral("Scan 1.5 %1.pdf")));
    EXPECT_FALSE(pages.save(m_page));
    EXPECT_FALSE(pages.save(m_page));
    EXPECT_EQ(pages.paths(),
              (QStringList{m_folder.filePath(QStringLiteral("Scan 1.5 %1 page 001.png")),
                           m_folder.filePath(QStringLiteral("Scan 1.5 %1 page 002.png"))}));
    const QImage saved(pages.paths().last());
    EXPECT_EQ(greyLevel(saved), 50);
    EXPECT_EQ(saved.dotsPerMeterX(), m_page.dotsPerMeterX());
}

TEST_F(PageFilesTest, AnExistingFileIsNeverTouched)
{
    putFile(m_folder.filePath(QStringLiteral("a page 001.png")), "precious");
    putFile(m_folder.filePath(QStringLiteral("a page 001 (2).png")), "precious");
    PageFiles pages(m_folder.filePath(QStringLiteral("a.pdf")));
    EXPECT_FALSE(pages.save(m_page));
    EXPECT_EQ(pages.paths(), QStringList(m_folder.filePath(QStringLiteral("a page 001 (3).png"))));
    for (const char *name : {"a page 001.png", "a page 001 (2).png"})
        EXPECT_EQ(QFileInfo(m_folder.filePath(QLatin1StringView(name))).size(), 8);
}

TEST_F(PageFilesTest, ScansOfOneNameAtOneTimeAllKeepTheirPages)
{
    const auto scan = [this] {
        PageFiles pages(m_folder.filePath(QStringLiteral("a.pdf")));
        for (int page = 0; page < 20; ++page)
            EXPECT_FALSE(pages.save(m_page));
    };
    {
        const std::jthread one(scan), other(scan);
    }
    EXPECT_EQ(names().size(), 40);
}

TEST_F(PageFilesTest, TheLongestNameOfAnOutputFileLeavesRoomForThePageNumber)
{
    const QString stem = QString(122, QChar(u'ä')) + QStringLiteral("x");
    PageFiles pages(m_folder.filePath(stem + QStringLiteral(".pdf")));
    EXPECT_FALSE(pages.save(m_page));
    EXPECT_EQ(names(), QStringList(QString(95, QChar(u'ä')) + QStringLiteral(" page 001.png")));
}

TEST_F(PageFilesTest, AReplacedFileIsReplacedWholeAndAFailureLeavesNothingBehind)
{
    const QString path = m_folder.filePath(QStringLiteral(".sample.png"));
    putFile(path, "old");
    EXPECT_FALSE(replacePng(m_page, path, Flushing::atOnce));
    EXPECT_EQ(QImage(path).size(), m_page.size());
    EXPECT_TRUE(replacePng(QImage(), path, Flushing::atOnce));
    EXPECT_EQ(QImage(path).size(), m_page.size());
    EXPECT_EQ(names(), QStringList(QStringLiteral(".sample.png")));
}

} // namespace
} // namespace scanengine
