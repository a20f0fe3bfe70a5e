#include "pipeline/PageText.h"

#include "pipeline/PageTurn.h"
#include "tests/Printers.h"
#include "tests/pipeline/TestPages.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

const char *const twoLines = "BT /F 20 Tf 100 200 Td (Herring and) Tj 0 -40 Td (mackerel) Tj ET";

/// A page with these entries and this content.
PdfDocument linesPage(const QByteArray &entries, const QByteArray &content = twoLines)
{
    auto document = PdfDocument::fromBytes(
        "%PDF-1.5\n1 0 obj <</Type /Catalog /Pages 2 0 R>> endobj\n"
        "2 0 obj <</Type /Pages /Kids [3 0 R] /Count 1>> endobj\n"
        "3 0 obj <</Type /Page /Parent 2 0 R /Contents 4 0 R /Resources <</Font <</F <</Type /Font "
        "/Subtype /Type1 /BaseFont /Helvetica>> >> >> " +
        entries + ">> endobj\n4 0 obj <</Length " + QByteArray::number(content.size()) +
        ">> stream\n" + content + "\nendstream endobj\ntrailer <</Root 1 0 R>>\n");
    return document ? std::move(*document) : PdfDocument();
}

/// The box of all that is dark on the page as shown, in points.
QRectF inkOf(const PdfPage &page)
{
    const QImage image = PageRaster::render(page, PageRaster::Dpi{144}).value();
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 128)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return {QPointF(ink.topLeft()) / 2, QSizeF(ink.size()) / 2};
}

QRectF hull(const QList<QRectF> &boxes)
{
    QRectF all;
    for (const QRectF &box : boxes)
        all |= box;
    return all;
}

/// Whether `box` covers `ink` without being larger than a line of text is around its letters.
bool fits(const QRectF &box, const QRectF &ink)
{
    return box.adjusted(-2, -2, 2, 2).contains(ink) && ink.adjusted(-9, -9, 9, 9).contains(box);
}

TEST(PageText, LiesWhereThePageShowsIt)
{
    const char *const boxes[] = {
        "/MediaBox [0 0 300 400]",
        "/MediaBox [50 -60 350 340]",
        "/MediaBox [0 0 300 400] /CropBox [80 120 280 330]",
        "/MediaBox [-20 -30 300 400] /CropBox [80 120 500 500]",
    };
    for (const QByteArray box : boxes) {
        for (const int rotation : {0, 90, 180, 270}) {
            const QByteArray entries = box + " /Rotate " + QByteArray::number(rotation);
            SCOPED_TRACE(entries.toStdString());
            const PdfDocument document = linesPage(entries);
            const PdfPage page = document.page(0).value();
            const auto text = pageText(page);
            ASSERT_TRUE(text);
            EXPECT_EQ(text->text.simplified(), u"Herring and mackerel"_qs);
            EXPECT_TRUE(fits(hull(text->boxes), inkOf(page)));
        }
    }
}

TEST(PageText, APointFindsTheNearestGapBetweenCharacters)
{
    PdfDocument document = linesPage("/MediaBox [10 20 310 420]");
    PdfPage page = document.page(0).value();
    const PageText upright = pageText(page).value();
    const auto boxOf = [&](TextRange range) {
        return hull(partOfText(page, upright, range)->boxes);
    };
    const QRectF first = boxOf({0, 11});
    const QRectF third = boxOf({2, 1});
    const auto mackerel = static_cast<int>(upright.text.indexOf(u"mackerel"));
    const QRectF second = boxOf({mackerel, 8});
    const struct {
        const char *what;
        QPointF point;
        int position;
    } cases[] = {
        {"left of all", first.center() - QPointF(200, 0), 0},
        {"third letter's left half", third.center() - QPointF(2, 0), 2},
        {"third letter's right half", third.center() + QPointF(2, 0), 3},
        {"above the third letter", third.center() - QPointF(2, 60), 2},
        {"right of the first line", {first.right() + 70, first.bottom()}, 11},
        {"left of the second line", {second.left() - 30, second.center().y()}, mackerel},
        {"below all", second.bottomRight() + QPointF(50, 80), mackerel + 8},
    };
    for (const int rotation : {0, 90, 180, 270}) {
        page.setRotation(rotation);
        const PageText whole = pageText(page).value();
        const QTransform turn = pageTurn(rotation, {300, 400});
        for (const auto &c : cases) {
            EXPECT_EQ(textPositionAt(page, whole, turn.map(c.point)), c.position)
                << c.what << " at " << rotation;
        }
    }
}

TEST(PageText, IsReadInTheOrderOfItsLinesWhicheverWayTheyWereWritten)
{
    // Lines that run up the sheet, for a page that is shown on its side.
    const PdfDocument document = linesPage("/MediaBox [0 0 400 300] /Rotate 90",
                                           "BT /F 20 Tf 0 1 -1 0 100 20 Tm (Herring and) Tj "
                                           "0 -40 Td (mackerel) Tj ET");
    const PdfPage page = document.page(0).value();
    const PageText text = pageText(page).value();
    EXPECT_EQ(text.text.simplified(), u"Herring and mackerel"_qs);
    EXPECT_TRUE(fits(hull(text.boxes), inkOf(page)));
}

TEST(PageText, PlacesCountCharactersAsTheTextDoes)
{
    const QImage white(8, 8, QImage::Format_Grayscale8);
    const OcrLine lines[] = {
        {u"Grüße aus Łódź"_qs,    {0.1, 0.8, 0.5, 0.05}},
        {u"日本 und 🐟 Fisch"_qs, {0.1, 0.6, 0.5, 0.05}},
        {u"danach"_qs,            {0.1, 0.4, 0.5, 0.05}},
    };
    const PdfPage page =
        PageRaster::makePage(losslessImage(white).value(), {300, 300}, lines).value();
    const PageText text = pageText(page).value();
    for (const QString &word : {u"Łódź"_qs, u"Fisch"_qs, u"danach"_qs}) {
        const auto start = static_cast<int>(text.text.indexOf(word));
        ASSERT_GE(start, 0) << qPrintable(word);
        EXPECT_EQ(partOfText(page, text, {start, static_cast<int>(word.size())})->text, word);
    }
}

TEST(PageText, ADamagedOrEmptyPageHasNone)
{
    EXPECT_EQ(pageText(plainPage())->text, QString());
    EXPECT_FALSE(textPositionAt(plainPage(), PageText(), {5, 5}));
    const PdfDocument damaged = linesPage("/MediaBox [0 0 300 400] /Contents 99 0 R");
    EXPECT_EQ(pageText(damaged.page(0).value())->text, QString());
}

TEST(PagePart, IsDrawnAsInTheWhole)
{
    for (const int rotation : {0, 90, 180, 270}) {
        SCOPED_TRACE(rotation);
        PdfDocument document = linesPage("/MediaBox [10 20 310 420]");
        PdfPage page = document.page(0).value();
        page.setRotation(rotation);
        const QImage whole = PageRaster::render(page, PageRaster::Dpi{144}).value();
        // The lower left quarter in page space.
        const QImage part =
            PageRaster::render(page, QRectF(10, 20, 150, 200),
                               rotation % 180 == 0 ? QSize(300, 400) : QSize(400, 300))
                .value();
        const QPoint corner(rotation == 180 || rotation == 270 ? whole.width() - part.width() : 0,
                            rotation == 0 || rotation == 270 ? whole.height() - part.height() : 0);
        EXPECT_EQ(part, whole.copy(QRect(corner, part.size())));
    }
}

} // namespace
} // namespace velmor
