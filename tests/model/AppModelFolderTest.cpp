#include "tests/model/AppModelFixture.h"
#include "tests/model/SmallDisk.h"
#include "tests/pipeline/TestPages.h"

namespace velmor {
namespace {

using testing::UnorderedElementsAre;
using AppModelFolderTest = AppModelFixture;

TEST_F(AppModelFolderTest, AFullDiskLeavesTheFormerFileAndThePageImages)
{
    const PdfDocument document = documentOf(QList<int>(50, 100));
    const QString old = folder.filePath(QStringLiteral("old.pdf"));
    ASSERT_TRUE(model->write(documentOf({200}), QUrl::fromLocalFile(old)));
    const QByteArray before = readFile(old);
    const auto size = static_cast<rlim_t>(document.bytes()->size());

    for (const rlim_t room : {rlim_t(0), size / 2, size - 1}) {
        {
            const SmallDisk disk(room);
            EXPECT_FALSE(model->write(document, QUrl::fromLocalFile(old))) << room;
        }
        EXPECT_EQ(readFile(old), before);
        EXPECT_EQ(QDir(folder.path()).entryList({QStringLiteral("old.pdf*")}).size(), 1);
    }
    EXPECT_TRUE(model->write(document, QUrl::fromLocalFile(old)));
}

TEST_F(AppModelFolderTest, OnlyVisiblePdfsAreListedNewestFirst)
{
    ASSERT_TRUE(QDir().mkpath(scansPath() + QStringLiteral("/folder.pdf")));
    for (const char *name : {"b.pdf", "a.PDF", "c.pdf.txt", ".hidden.pdf", "pdf"})
        writeFile(scansPath() + u'/' + QString::fromUtf8(name), {});
    model->loadResults();
    QStringList names;
    for (const ScanResult &result : model->results())
        names.append(result.url.fileName());
    EXPECT_THAT(names, UnorderedElementsAre(QStringLiteral("b.pdf"), QStringLiteral("a.PDF"),
                                            QStringLiteral("folder.pdf")));
    EXPECT_TRUE(
        std::ranges::is_sorted(model->results(), std::ranges::greater(), &ScanResult::date));

    const ScanResult former = model->results().first();
    model->loadResults();
    EXPECT_NE(model->results().first(), former);

    QDir(scansPath()).removeRecursively();
    model->loadResults();
    EXPECT_TRUE(model->results().isEmpty());
    EXPECT_FALSE(model->toast());
}

TEST_F(AppModelFolderTest, TheChosenFolderComesBackUnlessItIsGone)
{
    const QUrl chosen = QUrl::fromLocalFile(folder.filePath(QStringLiteral("ü folder")));
    ASSERT_TRUE(QDir().mkpath(chosen.toLocalFile()));
    model->setOutputFolder(chosen);
    EXPECT_EQ(AppModel().settings().outputFolder, chosen);
    // One that can't be remembered leaves the memory of the former.
    model->setOutputFolder(QUrl::fromLocalFile(folder.filePath(QStringLiteral("new"))));
    EXPECT_TRUE(QFileInfo(folder.filePath(QStringLiteral("new"))).isDir());
    EXPECT_EQ(AppModel().settings().outputFolder, chosen);
    QDir(chosen.toLocalFile()).removeRecursively();
    EXPECT_EQ(AppModel().settings().outputFolder, defaultOutputFolder());
}

} // namespace
} // namespace velmor
