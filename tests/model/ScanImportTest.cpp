#include "model/ScanImport.h"

#include "model/ImportSources.h"
#include "pipeline/RawStore.h"
#include "tests/model/AppModelFixture.h"
#include "tests/model/SmallDisk.h"

#include <QDirIterator>
#include <QImageReader>
#include <QLockFile>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScanImportTest : public AppModelFixture {
protected:
    ScanImportTest() { QDir().mkpath(scansPath()); }

    QUrl elsewhere(const QString &name) const
    {
        return QUrl::fromLocalFile(QDir(m_elsewhere.path()).filePath(name));
    }
    QUrl pdf(const QString &name, const QList<int> &heights)
    {
        writeFile(elsewhere(name).toLocalFile(), documentOf(heights).bytes().value());
        return elsewhere(name);
    }
    /// A picture that is `height` pixels high.
    QUrl picture(const QString &name, int height)
    {
        const QFileInfo file(elsewhere(name).toLocalFile());
        EXPECT_TRUE(QDir().mkpath(file.path()));
        EXPECT_TRUE(noise({96, height}).save(file.filePath()));
        return elsewhere(name);
    }
    QUrl text(const QString &name)
    {
        writeFile(elsewhere(name).toLocalFile(), "no document");
        return elsewhere(name);
    }

    ImportOutcome import(const QList<QUrl> &files)
    {
        std::optional<ImportOutcome> outcome;
        importFiles(model.get(), files).then([&](const ImportOutcome &o) { outcome = o; });
        EXPECT_TRUE(waitUntil([&] { return outcome.has_value(); }));
        return outcome.value_or(ImportOutcome());
    }

    QList<int> heightsIn(const QString &scan) const
    {
        const auto document =
            PdfDocument::open(QUrl::fromLocalFile(QDir(scansPath()).filePath(scan)));
        return document ? heightsOf(*document) : QList<int>();
    }

    /// Everything there is in the output folder, hidden files and raw pages included.
    QStringList everything() const
    {
        QStringList paths;
        QDirIterator all(scansPath(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext())
            paths.append(QDir(scansPath()).relativeFilePath(all.next()));
        paths.sort();
        return paths;
    }

private:
    QTemporaryDir m_elsewhere;
};

TEST_F(ScanImportTest, PdfsComeAsTheyAreUnderFreeNames)
{
    const QUrl file = pdf(QStringLiteral("a.pdf"), {100, 200});
    const QByteArray content = readFile(file.toLocalFile());
    writeFile(QDir(scansPath()).filePath(QStringLiteral("a.PDF")), "another scan");
    const ImportOutcome outcome = import({file, file});
    EXPECT_EQ(outcome.message(), QStringLiteral("Imported 2 scans"));
    EXPECT_THAT(scans(), ElementsAre(QStringLiteral("a 2.pdf"), QStringLiteral("a 3.pdf"),
                                     QStringLiteral("a.PDF")));
    for (const QUrl &saved : outcome.saved)
        EXPECT_EQ(readFile(saved.toLocalFile()), content);
    EXPECT_EQ(readFile(file.toLocalFile()), content);
    EXPECT_EQ(import(outcome.saved).message(), QStringLiteral("2 scans are here already"));
    EXPECT_EQ(scans().size(), 3);
}

TEST_F(ScanImportTest, ImagesBecomeThePagesOfOnePdfInTheOrderThatPeopleCountIn)
{
    const QUrl ten = picture(QStringLiteral("Page 10.png"), 1000);
    const QUrl two = picture(QStringLiteral("page 2.jpg"), 200);
    const QByteArray original = readFile(two.toLocalFile());
    const ImportOutcome outcome = import({ten, two});
    ASSERT_EQ(outcome.saved.size(), 1);
    const QString name = outcome.saved.first().fileName();
    EXPECT_THAT(name.toStdString(), testing::MatchesRegex("Imported_....-..-.._......\\.pdf"));
    // In points, at 96 pixels an inch: there is no telling how large these were.
    EXPECT_THAT(heightsIn(name), ElementsAre(150, 750));
    EXPECT_EQ(RawStore::pageCount(outcome.saved.first()), 2);
    EXPECT_EQ(readFile(RawStore::pageURL(outcome.saved.first(), 0)->toLocalFile()), original);
    EXPECT_EQ(readFile(two.toLocalFile()), original) << "the user's own stays";
    EXPECT_EQ(everything().filter(QStringLiteral(".import")), QStringList());
}

TEST_F(ScanImportTest, FoldersAreLookedIntoAndWhatIsNoDocumentIsNamed)
{
    picture(QStringLiteral("My letters/1.png"), 96);
    picture(QStringLiteral("My letters/2.png"), 192);
    pdf(QStringLiteral("My letters/b.pdf"), {100});
    text(QStringLiteral("My letters/notes.txt"));
    text(QStringLiteral("My letters/3.png"));
    picture(QStringLiteral("My letters/deeper/4.png"), 96);
    const QUrl dropped = elsewhere(QStringLiteral("My letters"));
    EXPECT_EQ(import({dropped}).message(), QStringLiteral("Imported 2 scans. Couldn't read 3.png"));
    EXPECT_THAT(scans(), ElementsAre(QStringLiteral("My letters.pdf"), QStringLiteral("b.pdf")));
    EXPECT_THAT(heightsIn(QStringLiteral("My letters.pdf")), ElementsAre(72, 144));

    const QList<QUrl> bad{text(QStringLiteral("x.txt")), elsewhere(QStringLiteral("gone.pdf")),
                          QUrl(QStringLiteral("https://example.org/y.pdf")),
                          QUrl::fromLocalFile(QStringLiteral("/dev/zero"))};
    const QStringList before = everything();
    EXPECT_EQ(import(bad).message(),
              QStringLiteral("Couldn't read x.txt, gone.pdf, y.pdf and 1 more"));
    EXPECT_EQ(import({}).message(), QStringLiteral("Nothing to import"));
    EXPECT_EQ(everything(), before);
}

TEST_F(ScanImportTest, DamagedFilesComeAsReadableScansOrNotAtAll)
{
    QList<QUrl> files;
    for (QDirIterator set(QStringLiteral(DAMAGED_FILES), QDir::Files); set.hasNext();)
        files.append(QUrl::fromLocalFile(set.next()));
    writeFile(elsewhere(QStringLiteral("huge.png")).toLocalFile(), hugePng());
    files.append(elsewhere(QStringLiteral("huge.png")));
    const ImportOutcome outcome = import(files);
    EXPECT_EQ(outcome.saved.size() + outcome.unread.size(), files.size());
    EXPECT_TRUE(outcome.unread.contains(QStringLiteral("huge.png")));
    for (const QUrl &saved : outcome.saved)
        EXPECT_TRUE(PdfDocument::open(saved)) << qPrintable(saved.fileName());
    EXPECT_EQ(scans().size(), outcome.saved.size());
}

TEST_F(ScanImportTest, AFullDiskOrAMissingFolderLeavesNothingBehind)
{
    const QUrl large = pdf(QStringLiteral("large.pdf"), QList<int>(40, 100));
    const QUrl small = pdf(QStringLiteral("small.pdf"), {100});
    const QUrl image = picture(QStringLiteral("image.png"), 2000);
    {
        const SmallDisk disk(rlim_t(QFileInfo(small.toLocalFile()).size() + 1));
        EXPECT_EQ(import({large, small, image}).message(),
                  QStringLiteral("Imported 1 scan. Couldn't write — folder isn't writable"));
    }
    EXPECT_THAT(everything(),
                ElementsAre(QStringLiteral(".velmor_raw"), QStringLiteral("small.pdf")));

    ScanSettings settings = model->settings();
    settings.outputFolder =
        QUrl::fromLocalFile(writeFile(folder.filePath(QStringLiteral("file")), ""));
    model->setSettings(settings);
    EXPECT_EQ(import({small}).message(), QStringLiteral("Couldn't write — folder isn't writable"));
}

TEST_F(ScanImportTest, WhatAnEndedImportLeftBehindIsRemovedByTheNext)
{
    const QDir hidden(QDir(scansPath()).filePath(QStringLiteral(".velmor_raw")));
    for (const char *name : {".import-ended", ".import-new", ".import-other"})
        ASSERT_TRUE(hidden.mkpath(QLatin1StringView(name)));
    // As of a process that can't be: its number is above all that Linux gives.
    writeFile(hidden.filePath(QStringLiteral(".import-ended/lock")), "4194305\nvelmor\n");
    QLockFile other(hidden.filePath(QStringLiteral(".import-other/lock")));
    ASSERT_TRUE(other.tryLock(0));
    import({pdf(QStringLiteral("a.pdf"), {100})});
    EXPECT_THAT(hidden.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot),
                ElementsAre(QStringLiteral(".import-new"), QStringLiteral(".import-other")));
}

TEST_F(ScanImportTest, AModelThatGoesEndsTheImport)
{
    const QUrl image = picture(QStringLiteral("image.png"), 2000);
    bool hasEnded = false;
    importFiles(model.get(), {image}, [this](int, int) {
        model.reset();
    }).then([&](const ImportOutcome &) { hasEnded = true; });
    EXPECT_TRUE(waitUntil([&] { return hasEnded; }));
    EXPECT_THAT(scans(), IsEmpty());
    EXPECT_THAT(everything(), ElementsAre(QStringLiteral(".velmor_raw")));
}

TEST(ImportSources, APictureGetsTheSizeThatItHadOnPaper)
{
    const struct {
        const char *what;
        QSize pixels;
        double stated;
        double dpi;
    } cases[] = {
        {"a scan",                      {2480, 3508},  300, 300   },
        {"a map at its true size",      {20000, 9000}, 400, 400   },
        {"a photograph, 72 by habit",   {4000, 3000},  72,  342.17},
        {"a screenshot without a size", {1920, 1080},  0,   164.24},
        {"an icon isn't blown up",      {64, 64},      0,   96    },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_NEAR(importDpi(c.pixels, c.stated), c.dpi, 0.01);
    }
}

/// A TIFF file of two grey pages, one pixel wide and one and two pixels high.
QByteArray twoPages()
{
    const auto entry = [](int tag, int type, int value) {
        QByteArray bytes;
        for (const int part : {tag, type})
            bytes.append(char(part)).append(char(part >> 8));
        for (const int part : {1, value})
            bytes.append(char(part)).append(char(part >> 8)).append(2, '\0');
        return bytes;
    };
    const int length = 2 + 9 * 12 + 4;
    QByteArray file("II*\0\x08\0\0\0", 8);
    for (const int height : {1, 2}) {
        const int next = height == 1 ? 8 + length : 0;
        const int data = 8 + 2 * length;
        file += QByteArray("\x09\0", 2) + entry(256, 3, 1) + entry(257, 3, height) +
                entry(258, 3, 8) + entry(259, 3, 1) + entry(262, 3, 1) + entry(273, 4, data) +
                entry(277, 3, 1) + entry(278, 3, height) + entry(279, 4, height);
        file.append(char(next)).append(char(next >> 8)).append(2, '\0');
    }
    return file + "\x40\x80";
}

/// A JPEG file of a camera that was held upright: 20 by 10 pixels, to be shown turned.
QByteArray turnedPhotograph(const QString &path)
{
    EXPECT_TRUE(noise({20, 10}).save(path, "jpg"));
    const QByteArray exif("\xFF\xE1\x00\x22"
                          "Exif\0\0"
                          "II*\0\x08\0\0\0"
                          "\x01\0"
                          "\x12\x01\x03\0\x01\0\0\0\x06\0\0\0"
                          "\0\0\0\0",
                          36);
    return readFile(path).insert(2, exif);
}

TEST(ImportSources, ImagesAreStagedUprightAndPageByPage)
{
    const QTemporaryDir folder;
    const QString tiff = writeFile(folder.filePath(QStringLiteral("fax.tif")), twoPages());
    const QString photograph = folder.filePath(QStringLiteral("photograph.jpg"));
    writeFile(photograph, turnedPhotograph(photograph));
    QList<VisionOCR::PageFile> pages;
    EXPECT_EQ(stageImage(tiff, folder.path(), pages), Staging::done);
    EXPECT_EQ(stageImage(photograph, folder.path(), pages), Staging::done);
    QList<QSize> sizes;
    for (const VisionOCR::PageFile &page : pages)
        sizes.append(QImageReader(page.path).size());
    EXPECT_THAT(sizes, ElementsAre(QSize(1, 1), QSize(1, 2), QSize(10, 20)));
    // A second page that is cut off costs the whole file, not half of it.
    writeFile(tiff, twoPages().first(130));
    EXPECT_EQ(stageImage(tiff, folder.path(), pages), Staging::unreadable);
    EXPECT_EQ(pages.size(), 3);
}

} // namespace
} // namespace velmor
