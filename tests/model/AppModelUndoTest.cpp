#include "model/ScanDate.h"
#include "pipeline/PdfDocument.h"
#include "tests/model/AppModelFixture.h"
#include "tests/pipeline/TestPages.h"

#include <QProcess>

#include <csignal>
#include <random>
#include <unistd.h>

namespace velmor {
namespace {

class AppModelUndoTest : public AppModelFixture {
protected:
    AppModelUndoTest()
    {
        // Backups go to the temporary folder.
        EXPECT_TRUE(QDir().mkpath(temporary()));
        EXPECT_TRUE(QDir().mkpath(scansPath()));
        qputenv("TMPDIR", QFile::encodeName(temporary()));
    }
    ~AppModelUndoTest() override { qunsetenv("TMPDIR"); }

    QString temporary() const { return folder.filePath(QStringLiteral("tmp")); }
    QString undoFolder() const { return temporary() + QStringLiteral("/velmor-undo"); }
    QUrl scan(const QString &name = QStringLiteral("a.pdf")) const
    {
        return QUrl::fromLocalFile(scansPath() + u'/' + name);
    }

    /// Saves a document of one page, which is so high, with a way back.
    bool edit(const QUrl &url, int height)
    {
        return model->writeWithBackup(documentOf({height}), url);
    }

    static int height(const QUrl &url) { return heightsOf(PdfDocument::open(url).value()).first(); }
    qsizetype backups() const { return QDir(undoFolder()).entryList(QDir::Files).size(); }
};

TEST_F(AppModelUndoTest, TheLastEditOfEachScanIsUndoneOnce)
{
    const QUrl a = scan();
    const QUrl b = scan(QStringLiteral("b.pdf"));
    EXPECT_FALSE(model->undoEdit(a));
    ASSERT_TRUE(model->write(documentOf({100}), a) && model->write(documentOf({500}), b));
    ASSERT_TRUE(edit(a, 200) && edit(a, 300) && edit(b, 600));
    EXPECT_EQ(model->undoableFiles(), QSet<QUrl>({a, b}));
    EXPECT_EQ(backups(), 2);

    EXPECT_TRUE(model->undoEdit(a));
    EXPECT_EQ(height(a), 200);
    EXPECT_EQ(height(b), 600);
    EXPECT_FALSE(model->undoEdit(a));
    EXPECT_EQ(model->undoableFiles(), QSet<QUrl>({b}));
    EXPECT_EQ(backups(), 1);
    makeModel();
    EXPECT_TRUE(model->undoableFiles().isEmpty());
}

TEST_F(AppModelUndoTest, AnEditThatFailsCostsTheUndo)
{
    ASSERT_TRUE(edit(scan(), 100) && edit(scan(), 200));
    ASSERT_FALSE(model->undoableFiles().isEmpty());
    QFile::remove(scan().toLocalFile());
    ASSERT_TRUE(QDir().mkpath(scan().toLocalFile()));
    EXPECT_FALSE(edit(scan(), 300));
    EXPECT_TRUE(model->undoableFiles().isEmpty());
    EXPECT_FALSE(model->undoEdit(scan()));
}

TEST_F(AppModelUndoTest, AnUndoThatFailsMayBeTriedAgain)
{
    ASSERT_TRUE(edit(scan(), 100) && edit(scan(), 200));
    const QString path = scan().toLocalFile();
    ASSERT_TRUE(QFile::remove(path) && QDir().mkpath(path));
    EXPECT_FALSE(model->undoEdit(scan()));
    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_TRUE(model->undoEdit(scan()));
    EXPECT_EQ(height(scan()), 100);

    ASSERT_TRUE(edit(scan(), 200));
    QDir(undoFolder()).removeRecursively();
    EXPECT_FALSE(model->undoEdit(scan()));
    EXPECT_EQ(model->undoableFiles().size(), 1);
    EXPECT_EQ(height(scan()), 200);
}

TEST_F(AppModelUndoTest, BackupsAreForNobodyElse)
{
    // Another's folder only where the test may give one away.
    for (const char *trap :
         {"ln -s .. velmor-undo", "touch velmor-undo", "mkdir -m 777 velmor-undo",
          "mkdir -m 700 velmor-undo; chown 12345 velmor-undo 2>&- || chmod 777 velmor-undo"}) {
        SCOPED_TRACE(trap);
        QDir(temporary()).removeRecursively();
        ASSERT_TRUE(QDir().mkpath(temporary()));
        (void)std::system(("cd " + QFile::encodeName(temporary()) + " && " + trap).constData());
        ASSERT_TRUE(edit(scan(), 100) && edit(scan(), 200));
        EXPECT_EQ(backups(), 0) << "they went elsewhere";
        EXPECT_TRUE(model->undoEdit(scan()));
        EXPECT_EQ(height(scan()), 100);
    }
}

TEST_F(AppModelUndoTest, WithoutAFolderForBackupsAnEditGoesAhead)
{
    for (const QString &name : {undoFolder(), undoFolder() + u'-' + QString::number(geteuid())})
        ASSERT_TRUE(QFile(name).open(QIODevice::WriteOnly));
    ASSERT_TRUE(edit(scan(), 100) && edit(scan(), 200));
    EXPECT_EQ(height(scan()), 200);
    EXPECT_TRUE(model->undoableFiles().isEmpty());
}

TEST_F(AppModelUndoTest, AnEditKeepsTheScansPlaceInTheList)
{
    for (const char *name : {"1.pdf", "2.pdf"})
        ASSERT_TRUE(model->write(documentOf({100}), scan(QString::fromUtf8(name))));
    if (!QFileInfo(scan(QStringLiteral("1.pdf")).toLocalFile()).birthTime().isValid())
        GTEST_SKIP() << "files have no date of their making here";
    model->loadResults();
    const auto dates = [this] {
        QHash<QString, QDateTime> listed;
        for (const ScanResult &result : model->results())
            listed.insert(result.name(), result.date);
        return listed;
    };
    const auto before = dates();
    ASSERT_TRUE(edit(scan(QStringLiteral("1.pdf")), 200));
    ASSERT_TRUE(edit(scan(QStringLiteral("1.pdf")), 300));
    ASSERT_TRUE(model->undoEdit(scan(QStringLiteral("1.pdf"))));
    model->loadResults();
    EXPECT_EQ(dates(), before);

    // Beyond this run only where files can carry their date.
    QFile probe(scansPath() + QStringLiteral("/probe"));
    ASSERT_TRUE(probe.open(QIODevice::WriteOnly));
    if (!keepScanDate(probe.handle(), QDateTime::currentDateTime()))
        GTEST_SKIP() << "no extended attributes here";
    makeModel();
    model->loadResults();
    EXPECT_EQ(dates(), before);
}

TEST_F(AppModelUndoTest, AKillAtAnyMomentLeavesTheOldFileOrTheNew)
{
    const QString path = scan().toLocalFile();
    std::minstd_rand random(7);
    // Nanoseconds within which a kill falls. Follows the speed of the disk, so that some come
    // before the end of the first write and some after.
    double latest = 3e6;
    int olds = 0;
    for (int round = 0; round < 200; ++round) {
        ASSERT_TRUE(model->write(documentOf({100}), scan()));
        QProcess writer;
        writer.start(QStringLiteral(REWRITER_PROGRAM), {path});
        // It says so when it begins, and is never done.
        ASSERT_TRUE(writer.waitForReadyRead(30'000));
        const double fraction = static_cast<double>(random()) / std::minstd_rand::max();
        const timespec delay{.tv_sec = 0, .tv_nsec = static_cast<long>(latest * fraction)};
        nanosleep(&delay, nullptr);
        kill(static_cast<pid_t>(writer.processId()), SIGKILL);
        ASSERT_TRUE(writer.waitForFinished(30'000));

        const auto document = PdfDocument::open(scan());
        ASSERT_TRUE(document) << "round " << round;
        const QList<int> heights = heightsOf(*document);
        const QList<int> rewritten(20, 300);
        ASSERT_TRUE(heights == QList<int>({100}) || heights == rewritten) << "round " << round;
        const bool isOld = heights.size() == 1;
        olds += isOld ? 1 : 0;
        latest = std::min(latest * (isOld ? 1.2 : 0.85), 9e8);
    }
    // The kills did come in the middle of it.
    EXPECT_GT(olds, 0);
    EXPECT_LT(olds, 200);
}

} // namespace
} // namespace velmor
