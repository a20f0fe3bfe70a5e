#include "model/ScanFiles.h"

#include "model/FileMove.h"
#include "pipeline/RawStore.h"
#include "tests/model/AppModelFixture.h"
#include "tests/model/SmallDisk.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFAcroFormDocumentHelper.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageLabelDocumentHelper.hh>

#include <unistd.h>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScanFilesTest : public AppModelFixture {
protected:
    ScanFilesTest() { QDir().mkpath(scansPath()); }

    /// A scan with its raw pages in the output folder.
    QUrl scan(const QString &name, const QList<int> &heights)
    {
        const QUrl url = QUrl::fromLocalFile(QDir(scansPath()).filePath(name));
        EXPECT_TRUE(model->write(documentOf(heights), url));
        QStringList raw;
        for (qsizetype page = 0; page < heights.size(); ++page)
            raw.append(writeFile(folder.filePath(QStringLiteral("raw %1").arg(page)), "raw"));
        RawStore::adopt(raw, url);
        return url;
    }

    QList<int> heightsIn(const QUrl &url)
    {
        const auto document = PdfDocument::open(url);
        return document ? heightsOf(*document) : QList<int>();
    }

    QStringList names(const QList<QUrl> &files)
    {
        QStringList names;
        for (const QUrl &file : files)
            names.append(file.fileName());
        return names;
    }

    QUrl damaged(const QString &name)
    {
        const QString path = QDir(scansPath()).filePath(name);
        writeFile(path, "%PDF-1.5\nno more than that\n");
        return QUrl::fromLocalFile(path);
    }
};

TEST_F(ScanFilesTest, EveryPageTurnsByAQuarterAndTheOldFileComesBack)
{
    const QUrl file = scan(QStringLiteral("a.pdf"), {100, 200, 300});
    for (const int turn : {90, 180, 270, 0}) {
        const ScanFiles::Outcome outcome = ScanFiles::rotate(*model, {file});
        EXPECT_EQ(outcome.message, QStringLiteral("Rotated"));
        const auto document = PdfDocument::open(file);
        ASSERT_TRUE(document);
        for (int page = 0; page < 3; ++page)
            EXPECT_EQ(document->page(page)->rotation(), turn);
    }
    EXPECT_EQ(RawStore::pageCount(file), 0);
    EXPECT_TRUE(model->undoEdit(file));
    EXPECT_EQ(PdfDocument::open(file)->page(0)->rotation(), 270);
}

TEST_F(ScanFilesTest, MergingGoesByTheNamesOfTheFiles)
{
    const QUrl second = scan(QStringLiteral("b.pdf"), {300});
    const QUrl first = scan(QStringLiteral("a.pdf"), {100, 200});
    const QUrl capital = scan(QStringLiteral("C.pdf"), {400});
    const QUrl bad = damaged(QStringLiteral("aa.pdf"));
    const ScanFiles::Outcome outcome = ScanFiles::merge(*model, {second, bad, first, capital});
    EXPECT_EQ(outcome.message, QStringLiteral("Merged 4 scans"));
    ASSERT_EQ(outcome.saved.size(), 1);
    EXPECT_THAT(outcome.unopened, ElementsAre(bad));
    EXPECT_THAT(heightsIn(outcome.saved.first()), ElementsAre(400, 100, 200, 300));
    EXPECT_EQ(RawStore::pageCount(outcome.saved.first()), 0);
    // What was merged stays, with its raw pages.
    EXPECT_EQ(heightsIn(first).size(), 2);
    EXPECT_EQ(RawStore::pageCount(first), 2);
    EXPECT_EQ(ScanFiles::merge(*model, {first}).message,
              QStringLiteral("Select 2+ scans to merge"));
    const QStringList before = scans();
    EXPECT_FALSE(ScanFiles::merge(*model, {bad, bad}).isWritten);
    EXPECT_EQ(scans(), before);
}

TEST_F(ScanFilesTest, PagesAreSavedOneByOneInTheOutputFolder)
{
    QTemporaryDir elsewhere;
    const QUrl file = QUrl::fromLocalFile(elsewhere.filePath(QStringLiteral("my.scan.pdf")));
    ASSERT_TRUE(model->write(documentOf({100, 200}), file));
    // A file that is in the way goes, with what belonged to it.
    const QUrl inTheWay = scan(QStringLiteral("my.scan_p2.pdf"), {900});
    ASSERT_TRUE(model->writeWithBackup(documentOf({900}), inTheWay));
    const QUrl single = scan(QStringLiteral("single.pdf"), {500});

    const ScanFiles::Outcome outcome = ScanFiles::split(*model, {single, file});
    EXPECT_EQ(outcome.message, QStringLiteral("Split into pages"));
    EXPECT_THAT(names(outcome.saved),
                ElementsAre(QStringLiteral("my.scan_p1.pdf"), QStringLiteral("my.scan_p2.pdf")));
    EXPECT_THAT(heightsIn(inTheWay), ElementsAre(200));
    EXPECT_EQ(RawStore::pageCount(inTheWay), 0);
    EXPECT_FALSE(model->undoEdit(inTheWay));
    EXPECT_EQ(QDir(elsewhere.path()).entryList(QDir::Files).size(), 1);
    EXPECT_EQ(ScanFiles::split(*model, {single}).message,
              QStringLiteral("Select a multi-page PDF to split"));

    const ScanFiles::Outcome again = ScanFiles::merge(*model, outcome.saved);
    ASSERT_EQ(again.saved.size(), 1);
    EXPECT_THAT(heightsIn(again.saved.first()), ElementsAre(100, 200));
}

/// Three pages that differ in boxes, turn and label, one with a form field. Their streams are such
/// as no writer would make again: odd blanks, a filter that does nothing, a picture's own bytes.
QByteArray unusualPages()
{
    const auto stream = [](const QByteArray &entries, const QByteArray &data) {
        return "<<" + entries + " /Length " + QByteArray::number(data.size()) + ">> stream\n" +
               data + "\nendstream endobj\n";
    };
    return "%PDF-1.5\n1 0 obj <</Type /Catalog /Pages 2 0 R /AcroForm <</Fields [6 0 R]>> "
           "/PageLabels <</Nums [0 <</S /r>> 2 <</S /D /P (A-)>>]>>>> endobj\n"
           "2 0 obj <</Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /Count 3 /MediaBox [0 0 90.5 80] "
           "/Resources <</XObject <</I 9 0 R>>>>>> endobj\n"
           "3 0 obj <</Type /Page /Parent 2 0 R /Annots [6 0 R] /Contents 7 0 R>> endobj\n"
           "4 0 obj <</Type /Page /Parent 2 0 R /Rotate 90 /CropBox [5 5 40 40] "
           "/Contents [7 0 R 8 0 R]>> endobj\n"
           "5 0 obj <</Type /Page /Parent 2 0 R /MediaBox [-10 -20 30 40] /Contents 8 0 R>> "
           "endobj\n"
           "6 0 obj <</Type /Annot /Subtype /Widget /FT /Tx /T (name) /V (Ada) /Rect [1 1 8 8] "
           "/P 3 0 R>> endobj\n7 0 obj " +
           stream("", "q  10 0 0\t10 0 0 cm /I   Do Q % as it is") + "8 0 obj " +
           stream("/Filter /ASCIIHexDecode", "3020 67 20 5b5d2030 2064>") + "9 0 obj " +
           stream("/Type /XObject /Subtype /Image /Width 2 /Height 1 /BitsPerComponent 8 "
                  "/ColorSpace /DeviceGray",
                  QByteArray("\x00\xFF", 2)) +
           "trailer <</Root 1 0 R>>\n";
}

/// Each page with its boxes, turn, label and fields, and the bytes of its streams as they lie in
/// the file.
QList<std::string> pagesOf(const QUrl &url)
{
    QPDF file;
    file.setSuppressWarnings(true);
    file.processFile(qPrintable(url.toLocalFile()));
    QPDFPageLabelDocumentHelper labels(file);
    QPDFAcroFormDocumentHelper form(file);
    QList<std::string> pages;
    for (QPDFPageObjectHelper &page : QPDFPageDocumentHelper(file).getAllPages()) {
        std::string told =
            page.getMediaBox().unparseResolved() + page.getCropBox().unparseResolved();
        told += page.getAttribute("/Rotate", false).unparse();
        QPDFObjectHandle label = labels.getLabelForPage(pages.size());
        told += label.getKey("/S").unparse() + label.getKey("/P").unparse() +
                label.getKey("/St").unparse();
        for (QPDFFormFieldObjectHelper &field : form.getFormFieldsForPage(page))
            told += field.getFullyQualifiedName() + field.getValueAsString();
        std::vector<QPDFObjectHandle> streams = page.getPageContents();
        for (const auto &[name, image] : page.getImages())
            streams.push_back(image);
        for (QPDFObjectHandle &stream : streams) {
            const auto bytes = stream.getRawStreamData();
            told += stream.getDict().getKey("/Filter").unparse();
            told.append(reinterpret_cast<const char *>(bytes->getBuffer()), bytes->getSize());
        }
        pages.append(told);
    }
    return pages;
}

TEST_F(ScanFilesTest, SplittingAndMergingGivesTheSamePagesBack)
{
    const QUrl file = QUrl::fromLocalFile(QDir(scansPath()).filePath(QStringLiteral("a.pdf")));
    writeFile(file.toLocalFile(), unusualPages());
    const QList<std::string> original = pagesOf(file);
    ASSERT_EQ(original.size(), 3);
    EXPECT_THAT(original[0], testing::HasSubstr("nameAda"));
    const ScanFiles::Outcome split = ScanFiles::split(*model, {file});
    ASSERT_EQ(split.saved.size(), 3);
    QList<std::string> alone;
    for (const QUrl &single : split.saved)
        alone += pagesOf(single);
    const ScanFiles::Outcome merged = ScanFiles::merge(*model, split.saved);
    ASSERT_EQ(merged.saved.size(), 1);
    EXPECT_EQ(pagesOf(merged.saved.first()), original);
    EXPECT_EQ(alone, original);
}

TEST_F(ScanFilesTest, ARenamedScanKeepsItsRawPagesItsUndoAndItsPlace)
{
    const QUrl file = scan(QStringLiteral("old.name.pdf"), {100, 200});
    ASSERT_TRUE(model->writeWithBackup(documentOf({300, 400}), file));
    scan(QStringLiteral("newer.pdf"), {500});
    // Left behind by a scan that another program deleted.
    const QUrl former = scan(QStringLiteral("a new, ü #1.pdf"), {700, 800, 900});
    QFile::remove(former.toLocalFile());

    const ScanFiles::Renaming renaming =
        ScanFiles::rename(*model, file, QStringLiteral(" a new, ü #1.PDF "));
    EXPECT_EQ(renaming.problem, QString());
    EXPECT_EQ(renaming.file, former);
    EXPECT_THAT(scans(),
                ElementsAre(QStringLiteral("a new, ü #1.pdf"), QStringLiteral("newer.pdf")));
    EXPECT_EQ(RawStore::pageCount(former), 2);
    EXPECT_EQ(RawStore::pageCount(file), 0);
    model->loadResults();
    EXPECT_EQ(model->results().last().url, former) << "by its date";
    EXPECT_TRUE(model->undoEdit(former));
    EXPECT_THAT(heightsIn(former), ElementsAre(100, 200));
    EXPECT_FALSE(model->undoEdit(file));
}

TEST_F(ScanFilesTest, ARenamedScanTakesOverNoRawPagesOfOthers)
{
    const QUrl file = scan(QStringLiteral("a.pdf"), {100});
    const QUrl namesake = scan(QStringLiteral("a.PDF"), {200});
    const QUrl former = scan(QStringLiteral("b.pdf"), {300});
    QFile::remove(former.toLocalFile());
    EXPECT_EQ(ScanFiles::rename(*model, file, QStringLiteral("b")).file, former);
    EXPECT_EQ(RawStore::pageCount(former), 0) << "one page too, but of the former scan";
    EXPECT_EQ(RawStore::pageCount(namesake), 1);
}

TEST_F(ScanFilesTest, TwoNamesOfOneFileAreNotMovedOntoEachOther)
{
    const QString file = scan(QStringLiteral("a.pdf"), {100}).toLocalFile();
    const QString other = QDir(scansPath()).filePath(QStringLiteral("A.pdf"));
    ASSERT_EQ(link(qPrintable(file), qPrintable(other)), 0);
    EXPECT_EQ(moveFile(file, other), FileMove::taken);
    EXPECT_EQ(scans().size(), 2);
}

TEST_F(ScanFilesTest, ANameThatCannotBeIsRefused)
{
    const QUrl file = scan(QStringLiteral("a.pdf"), {100});
    scan(QStringLiteral("b.pdf"), {200});
    scan(QStringLiteral("c.PDF"), {300});
    const QStringList before = scans();
    const struct {
        QString name;
        const char *problem;
    } cases[] = {
        {QStringLiteral("  .pdf"), "A scan needs a name"},
        {QStringLiteral("x/y"), "A name can't contain “/”"},
        {QStringLiteral("..hidden"), "A name can't begin with a dot"},
        {QString(126, u'ü'), "This name is too long"},
        {QStringLiteral("b"), "There is a scan of this name already"},
        {QStringLiteral("c"), "There is a scan of this name already"},
        {QStringLiteral("a.pdf"), ""},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(qPrintable(c.name));
        const ScanFiles::Renaming renaming = ScanFiles::rename(*model, file, c.name);
        EXPECT_EQ(renaming.problem, QString::fromUtf8(c.problem));
        EXPECT_EQ(renaming.file, file);
        EXPECT_EQ(scans(), before);
        EXPECT_EQ(RawStore::pageCount(file), 1);
    }
    const QUrl gone = QUrl::fromLocalFile(QDir(scansPath()).filePath(QStringLiteral("gone.pdf")));
    EXPECT_EQ(ScanFiles::rename(*model, gone, QStringLiteral("d")).problem,
              QStringLiteral("This scan isn't there any more"));
}

TEST_F(ScanFilesTest, AScanWhoseRawPagesCannotFollowKeepsItsName)
{
    const QUrl file = scan(QStringLiteral("a.pdf"), {100});
    writeFile(QDir(scansPath()).filePath(QStringLiteral(".velmor_raw/b")), "in the way");
    const ScanFiles::Renaming renaming = ScanFiles::rename(*model, file, QStringLiteral("b"));
    EXPECT_EQ(renaming.problem, QStringLiteral("Couldn't rename — folder isn't writable"));
    EXPECT_EQ(renaming.file, file);
    EXPECT_THAT(scans(), ElementsAre(QStringLiteral("a.pdf")));
    EXPECT_EQ(RawStore::pageCount(file), 1);
}

TEST_F(ScanFilesTest, WhatCannotBeWrittenIsToldAndTheRestIsDone)
{
    const QUrl large = scan(QStringLiteral("large.pdf"), {100, 200, 300});
    const QUrl small = scan(QStringLiteral("small.pdf"), {100});
    const QByteArray before = readFile(large.toLocalFile());
    {
        // Room for the small file alone.
        const SmallDisk disk(rlim_t(before.size() + QFileInfo(small.toLocalFile()).size()) / 2);
        const ScanFiles::Outcome outcome = ScanFiles::rotate(*model, {large, small});
        EXPECT_EQ(outcome.message, QStringLiteral("Couldn't write — folder isn't writable"));
        EXPECT_THAT(outcome.saved, ElementsAre(small));
        EXPECT_FALSE(ScanFiles::merge(*model, {large, small}).isWritten);
    }
    EXPECT_EQ(readFile(large.toLocalFile()), before);
}

/// 0 for a sound file, more for one with warnings or errors.
int damageOf(const QString &path)
{
    QProcess qpdf;
    qpdf.start(QStringLiteral("qpdf"), {QStringLiteral("--check"), path});
    EXPECT_TRUE(qpdf.waitForFinished(60'000));
    return qpdf.exitCode() == 3 ? 1 : qpdf.exitCode();
}

/// Each damaged file stands between two good ones.
TEST_F(ScanFilesTest, DamagedFilesCostNoPageOfTheOthers)
{
    const QUrl before = scan(QStringLiteral("a.pdf"), {100, 200});
    const QUrl after = scan(QStringLiteral("z.pdf"), {300, 400});
    int files = 0;
    for (QDirIterator set(QStringLiteral(DAMAGED_FILES), QDir::Files); set.hasNext();) {
        const QString source = set.next();
        SCOPED_TRACE(qPrintable(source));
        ++files;
        const QUrl bad = QUrl::fromLocalFile(QDir(scansPath()).filePath(QStringLiteral("m.pdf")));
        const QByteArray content = readFile(source);
        writeFile(bad.toLocalFile(), content);

        const ScanFiles::Outcome merged = ScanFiles::merge(*model, {after, bad, before});
        if (merged.isWritten) {
            const QList<int> heights = heightsIn(merged.saved.first());
            ASSERT_GE(heights.size(), 4);
            EXPECT_THAT(heights.mid(0, 2), ElementsAre(100, 200));
            EXPECT_THAT(heights.mid(heights.size() - 2), ElementsAre(300, 400));
            EXPECT_LE(damageOf(merged.saved.first().toLocalFile()), damageOf(source));
            QFile::remove(merged.saved.first().toLocalFile());
        }
        const ScanFiles::Outcome split = ScanFiles::split(*model, {before, bad, after});
        EXPECT_THAT(
            names(split.saved),
            testing::IsSupersetOf({QStringLiteral("a_p1.pdf"), QStringLiteral("a_p2.pdf"),
                                   QStringLiteral("z_p1.pdf"), QStringLiteral("z_p2.pdf")}));
        const ScanFiles::Outcome rotated = ScanFiles::rotate(*model, {before, bad, after});
        EXPECT_TRUE(rotated.saved.contains(before) && rotated.saved.contains(after));
        if (!rotated.saved.contains(bad)) {
            EXPECT_EQ(readFile(bad.toLocalFile()), content) << "as it was";
        }
    }
    EXPECT_GE(files, 30);
}

} // namespace
} // namespace velmor
