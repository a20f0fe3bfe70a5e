#include "model/PageEdits.h"

#include "pipeline/RawStore.h"
#include "tests/model/AppModelFixture.h"
#include "tests/model/SmallDisk.h"

namespace velmor {
namespace {

using testing::ElementsAre;

class PageEditsTest : public AppModelFixture {
protected:
    /// A scan of five pages with raw ones, an outline that leads to its third and fourth page, and
    /// pages that are numbered.
    PageEditsTest()
    {
        QDir().mkpath(scansPath());
        file = QUrl::fromLocalFile(QDir(scansPath()).filePath(QStringLiteral("a.pdf")));
        QByteArray pdf = "%PDF-1.5\n1 0 obj <</Type /Catalog /Pages 2 0 R /Outlines 10 0 R "
                         "/PageLabels <</Nums [0 <</S /r>> 3 <</S /D>>]>> >> endobj\n"
                         "2 0 obj <</Type /Pages /Count 5 /Kids [3 0 R 4 0 R 5 0 R 6 0 R 7 0 R]>> "
                         "endobj\n"
                         "10 0 obj <</First 11 0 R /Last 12 0 R /Count 2>> endobj\n"
                         "11 0 obj <</Title (Third) /Parent 10 0 R /Next 12 0 R /Dest [5 0 R "
                         "/Fit]>> endobj\n"
                         "12 0 obj <</Title (Fourth) /Parent 10 0 R /Prev 11 0 R /Dest [6 0 R "
                         "/Fit]>> endobj\n";
        QStringList raw;
        for (int page = 1; page <= 5; ++page) {
            pdf += QByteArray::number(page + 2) +
                   " 0 obj <</Type /Page /Parent 2 0 R /MediaBox [0 0 100 " +
                   QByteArray::number(page * 100) + "]>> endobj\n";
            raw.append(writeFile(folder.filePath(QString::number(page)), "raw"));
        }
        writeFile(file.toLocalFile(), pdf + "trailer <</Root 1 0 R>>\n");
        RawStore::adopt(raw, file);
    }

    PdfDocument opened() const { return PdfDocument::open(file).value(); }

    /// The numbers that qpdf tells of all entries of a part of the document.
    QList<int> numbers(const char *part, const char *name) const
    {
        const QByteArray json =
            outputOf(QStringLiteral("qpdf"), {QStringLiteral("--json=1"), file.toLocalFile()});
        QList<int> found;
        const QJsonObject all = QJsonDocument::fromJson(json).object();
        for (const QJsonValue entry : all[QLatin1String(part)].toArray())
            found.append(entry[QLatin1String(name)].toInt());
        return found;
    }

    /// The page, from 1, that each outline entry leads to.
    QList<int> outline() const { return numbers("outlines", "destpageposfrom1"); }
    /// The page, from 0, with which each kind of page numbers begins.
    QList<int> labels() const { return numbers("pagelabels", "index"); }

    QUrl file;
    const QList<PdfPage> twoPages{plainPage({50, 11}), plainPage({50, 12})};
    const QString notWritten = QStringLiteral("Couldn't write — folder isn't writable");
};

TEST_F(PageEditsTest, CroppedPagesTakeThePlaceOfTheirPage)
{
    PdfDocument document = opened();
    const auto outcome = PageEdits::putCroppedPages(*model, document, 2, twoPages, file);
    EXPECT_TRUE(outcome.isWritten);
    EXPECT_EQ(outcome.message, QStringLiteral("Cropped into 2 pages"));
    EXPECT_THAT(heightsOf(opened()), ElementsAre(100, 200, 11, 12, 400, 500));
    EXPECT_THAT(outline(), ElementsAre(3, 5));
    EXPECT_THAT(labels(), ElementsAre(0, 4));
    EXPECT_EQ(RawStore::pageCount(file), 0);
    outputOf(QStringLiteral("qpdf"), {QStringLiteral("--check"), file.toLocalFile()});

    document = opened();
    EXPECT_EQ(PageEdits::putCroppedPages(*model, document, 5, {plainPage({50, 13})}, file).message,
              QStringLiteral("Cropped"));
    EXPECT_THAT(heightsOf(opened()), ElementsAre(100, 200, 11, 12, 400, 13));
    EXPECT_TRUE(model->undoEdit(file));
    EXPECT_THAT(heightsOf(opened()), ElementsAre(100, 200, 11, 12, 400, 500));
}

TEST_F(PageEditsTest, ALevelledPageKeepsTheRawPages)
{
    PdfDocument document = opened();
    const auto outcome = PageEdits::putLevelledPage(*model, document, 3, plainPage({50, 14}), file);
    EXPECT_TRUE(outcome.isWritten);
    EXPECT_EQ(outcome.message, QStringLiteral("Magic applied to page 4 — paintbrush copies it to "
                                              "other scans, Ctrl+Z undoes"));
    EXPECT_THAT(heightsOf(opened()), ElementsAre(100, 200, 300, 14, 500));
    EXPECT_THAT(outline(), ElementsAre(3, 4));
    EXPECT_THAT(labels(), ElementsAre(0, 3));
    EXPECT_EQ(RawStore::pageCount(file), 5);
    EXPECT_TRUE(model->undoableFiles().contains(file));
}

TEST_F(PageEditsTest, WhatCannotBeWrittenLeavesTheFileAndItsRawPages)
{
    const QByteArray before = readFile(file.toLocalFile());
    {
        const SmallDisk disk(500);
        PdfDocument document = opened();
        const auto crop = PageEdits::putCroppedPages(*model, document, 2, twoPages, file);
        EXPECT_FALSE(crop.isWritten);
        EXPECT_EQ(crop.message, notWritten);
        document = opened();
        EXPECT_EQ(PageEdits::putLevelledPage(*model, document, 2, twoPages[0], file).message,
                  notWritten);
    }
    PdfDocument document = opened();
    const auto none = PageEdits::putCroppedPages(*model, document, 2, {}, file);
    EXPECT_FALSE(none.isWritten);
    EXPECT_EQ(none.message, QString());
    const auto nowhere = PageEdits::putCroppedPages(*model, document, 5, twoPages, file);
    EXPECT_FALSE(nowhere.isWritten);
    EXPECT_EQ(nowhere.message, u"Not applied — the document can't take the new pages");
    EXPECT_EQ(PageEdits::putLevelledPage(*model, document, 5, twoPages[0], file).message,
              nowhere.message);
    EXPECT_EQ(readFile(file.toLocalFile()), before);
    EXPECT_EQ(RawStore::pageCount(file), 5);

    // The folder has gone, and the file with it.
    ASSERT_TRUE(QDir(scansPath()).removeRecursively());
    EXPECT_EQ(PageEdits::putCroppedPages(*model, document, 2, twoPages, file).message, notWritten);
}

} // namespace
} // namespace velmor
