#include "pipeline/PdfDocument.h"

#include "tests/pipeline/TestPages.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::ElementsAre;

/// A file of one page with these entries in its page tree and its page, without a cross-reference
/// table, which is rebuilt on opening.
QByteArray pdfWith(const QByteArray &treeEntries, const QByteArray &pageEntries)
{
    return "%PDF-1.5\n1 0 obj <</Type /Catalog /Pages 2 0 R>> endobj\n"
           "2 0 obj <</Type /Pages /Kids [3 0 R] /Count 1 " +
           treeEntries + ">> endobj\n3 0 obj <</Type /Page /Parent 2 0 R /Contents 4 0 R " +
           pageEntries +
           ">> endobj\n4 0 obj <</Length 12>> stream\n0 0 5 5 re f\nendstream endobj\n"
           "trailer <</Root 1 0 R>>\n";
}

TEST(PdfPage, BoxesAndRotationAreInheritedAndHaveDefaults)
{
    const QRectF letter(0, 0, 612, 792);
    const QRectF small(10, 20, 100, 200);
    const struct {
        const char *tree, *page;
        QRectF media, crop;
        int rotation;
    } cases[] = {
        {"",                                      "/MediaBox [110 220 10 20] /Rotate 90", small,  small,             90 },
        {"/MediaBox [10 20 110 220] /Rotate 270", "",                                     small,  small,             270},
        {"/MediaBox [0 0 9 9] /Rotate 90",        "/MediaBox [10 20 110 220] /Rotate 0",  small,  small,             0  },
        {"",                                      "",                                     letter, letter,            0  },
        {"",                                      "/MediaBox [5 5 5 9]",                  letter, letter,            0  },
        {"",                                      "/MediaBox [(a) 0 1 2]",                letter, letter,            0  },
        {"/MediaBox [10 20 110 220]",             "/CropBox [0 0 60 500]",                small,  {10, 20, 50, 200}, 0  },
        {"/MediaBox [10 20 110 220]",             "/CropBox [300 300 400 400]",           small,  small,             0  },
        {"/MediaBox [10 20 110 220]",             "/Rotate 450",                          small,  small,             450},
        {"/MediaBox [10 20 110 220]",             "/Rotate 45",                           small,  small,             0  },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.tree << " and " << c.page);
        const auto document = PdfDocument::fromBytes(pdfWith(c.tree, c.page));
        ASSERT_TRUE(document);
        const auto page = document->page(0);
        ASSERT_TRUE(page);
        EXPECT_EQ(page->mediaBox(), c.media);
        EXPECT_EQ(page->cropBox(), c.crop);
        EXPECT_EQ(page->rotation(), c.rotation);
        const QSizeF shown = c.crop.size();
        EXPECT_EQ(page->displayedSize(), c.rotation % 180 != 0 ? shown.transposed() : shown);
    }
}

/// Three pages labelled i, ii and A-1, the first with a text field.
QByteArray labelledForm()
{
    return "%PDF-1.5\n1 0 obj <</Type /Catalog /Pages 2 0 R /AcroForm <</Fields [6 0 R]>> "
           "/PageLabels <</Nums [0 <</S /r>> 2 <</S /D /P (A-)>>]>>>> endobj\n"
           "2 0 obj <</Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /Count 3 /MediaBox [0 0 9 9]>> "
           "endobj\n"
           "3 0 obj <</Type /Page /Parent 2 0 R /Annots [6 0 R]>> endobj\n"
           "4 0 obj <</Type /Page /Parent 2 0 R>> endobj\n"
           "5 0 obj <</Type /Page /Parent 2 0 R>> endobj\n"
           "6 0 obj <</Type /Annot /Subtype /Widget /FT /Tx /T (name) /V (Ada) /Rect [1 1 8 8] "
           "/P 3 0 R>> endobj\ntrailer <</Root 1 0 R>>\n";
}

TEST(PdfDocument, AppendedPagesBringTheirLabelsAndFields)
{
    const auto form = PdfDocument::fromBytes(labelledForm());
    ASSERT_TRUE(form);
    PdfDocument merged = documentOf({100, 200});
    EXPECT_EQ(merged.appendPages(*form, 0, 3), 3);
    EXPECT_EQ(merged.appendPages(*form, 2, 5), 1);
    EXPECT_EQ(merged.appendPages(*form, 7, 1), 0);
    EXPECT_EQ(merged.appendPages(documentOf({300}), 0, 1), 1);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("merged.pdf"));
    writeFile(path, merged.bytes().value());
    const QJsonObject told =
        QJsonDocument::fromJson(outputOf(QStringLiteral("qpdf"), {QStringLiteral("--json"), path}))
            .object();

    QStringList labels;
    for (const QJsonValue &entry : told[u"pagelabels"].toArray()) {
        const QJsonObject label = entry[u"label"].toObject();
        labels.append(label[u"/P"].toString() + label[u"/S"].toString() +
                      QString::number(label[u"/St"].toInt(1)));
    }
    EXPECT_EQ(labels.join(u' '), QStringLiteral("/D1 /D2 /r1 /r2 u:A-/D1 u:A-/D1 /D1"));
    const QJsonArray fields = told[u"acroform"][u"fields"].toArray();
    ASSERT_EQ(fields.size(), 1);
    EXPECT_EQ(fields[0][u"value"].toString(), QStringLiteral("u:Ada"));
    EXPECT_EQ(fields[0][u"pageposfrom1"].toInt(), 3);
}

TEST(PdfDocument, PagesAreInsertedAndRemovedByIndex)
{
    PdfDocument document = documentOf({100, 200});
    EXPECT_TRUE(document.insertPage(plainPage({50, 300}), 1));
    EXPECT_TRUE(document.insertPage(plainPage({50, 400}), 0));
    EXPECT_THAT(heightsOf(document), ElementsAre(400, 100, 300, 200));
    EXPECT_TRUE(document.insertPage(*document.page(3), 0));
    EXPECT_TRUE(document.removePage(1));
    EXPECT_THAT(heightsOf(document), ElementsAre(200, 100, 300, 200));

    EXPECT_FALSE(document.insertPage(plainPage(), 5));
    EXPECT_FALSE(document.insertPage(plainPage(), -1));
    EXPECT_FALSE(document.removePage(4));
    EXPECT_FALSE(document.page(4));
    EXPECT_FALSE(document.page(-1));
}

TEST(PdfDocument, ACopiedPageOutlivesItsDocument)
{
    PdfDocument target;
    {
        const auto source = PdfDocument::fromBytes(documentOf({100}).bytes().value());
        EXPECT_TRUE(target.insertPage(*source->page(0), 0));
    }
    const auto again = PdfDocument::fromBytes(target.bytes().value());
    ASSERT_TRUE(again);
    EXPECT_EQ(qGray(PageRaster::render(*again->page(0), PageRaster::Dpi{72})->pixel(50, 50)), 128);
}

TEST(PdfDocument, OpensWhatCanBeReadWithoutAPassword)
{
    QTemporaryDir folder;
    const QString plain =
        writeFile(folder.filePath(QStringLiteral("p.pdf")), documentOf({100, 200}).bytes().value());
    const auto encrypted = [&](const QString &userPassword) {
        const QString path = folder.filePath(QStringLiteral("e.pdf"));
        outputOf(QStringLiteral("qpdf"),
                 {QStringLiteral("--encrypt"), userPassword, QStringLiteral("owner"),
                  QStringLiteral("256"), QStringLiteral("--"), plain, path});
        return readFile(path);
    };
    const QByteArray whole = readFile(plain);
    const struct {
        const char *what;
        QByteArray bytes;
        int pages; ///< -1 for what doesn't open.
    } cases[] = {
        {"no end", whole.left(whole.lastIndexOf("startxref")), 2},
        {"junk in front", "junk\n" + whole, 2},
        {"owner's password", encrypted({}), 2},
        {"reader's password", encrypted(QStringLiteral("x")), -1},
        {"half", whole.left(whole.size() / 10), -1},
        {"empty", {}, -1},
        {"no PDF", "This is no document.", -1},
        {"tree without leaves", pdfWith("", "").replace("/Kids [3 0 R]", "/Kids [2 0 R]"), -1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const auto document = PdfDocument::fromBytes(c.bytes);
        EXPECT_EQ(document ? document->pageCount() : -1, c.pages);
    }
    EXPECT_FALSE(PdfDocument::open(QUrl::fromLocalFile(folder.path())));
    EXPECT_EQ(PdfDocument::open(QUrl::fromLocalFile(plain))->documentURL(),
              QUrl::fromLocalFile(plain));
}

TEST(PdfDocument, WhatWasRepairedCanBeSaved)
{
    const QByteArray sound = pdfWith("/MediaBox [0 0 9 9]", "");
    const QByteArray damaged[] = {
        QByteArray(sound).replace("/Length 12", "/Length 99"),
        QByteArray(sound).replace("/Length 12", "/Length 12 /Length 12"),
        QByteArray(sound).replace("/Count 1 ", "/Count 7 "),
        QByteArray(sound).replace("endstream endobj", "endstream >> endobj"),
    };
    for (const QByteArray &file : damaged) {
        SCOPED_TRACE(file.toStdString());
        const auto document = PdfDocument::fromBytes(file);
        ASSERT_TRUE(document);
        const auto saved = document->bytes();
        ASSERT_TRUE(saved);
        EXPECT_TRUE(saved->contains("0 0 5 5 re f"));
        EXPECT_EQ(PdfDocument::fromBytes(*saved)->pageCount(), 1);
    }
}

TEST(PdfDocument, AFileThatChangesAfterOpeningChangesNothing)
{
    QTemporaryDir folder;
    const QString path =
        writeFile(folder.filePath(QStringLiteral("a.pdf")), documentOf({100}).bytes().value());
    const auto document = PdfDocument::open(QUrl::fromLocalFile(path));
    writeFile(path, "overwritten");
    EXPECT_THAT(heightsOf(PdfDocument::fromBytes(document->bytes().value()).value()),
                ElementsAre(100));
}

} // namespace
} // namespace velmor
