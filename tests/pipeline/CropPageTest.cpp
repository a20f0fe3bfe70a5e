#include "pipeline/PageSource.h"
#include "pipeline/RawStore.h"
#include "pipeline/VisionOCR.h"
#include "tests/Waiting.h"
#include "tests/pipeline/TestPages.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace velmor {
namespace {

constexpr std::array greys{0, 80, 160, 240};

/// A sheet whose quarters have the four greys, line by line.
QImage quarters(QSize size)
{
    QImage image(size, QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int quarter = (2 * y >= image.height() ? 2 : 0) + (2 * x >= image.width());
            image.scanLine(y)[x] = static_cast<uchar>(greys[static_cast<size_t>(quarter)]);
        }
    }
    return image;
}

PdfPage pageOf(const QImage &image, QSizeF size)
{
    return PageRaster::makePage(losslessImage(image).value(), size, {}).value();
}

Quad region(const QRectF &r)
{
    return {
        {r.topLeft(), r.topRight(), r.bottomRight(), r.bottomLeft()}
    };
}

const Quad upperLeft = region({0, 0, .5, .5});
const Quad lowerRight = region({.5, .5, .5, .5});

/// Without recognition.
QList<PdfPage> cropped(const PdfPage &page, const QList<Quad> &boxes,
                       const std::optional<QUrl> &raw = {})
{
    std::optional<QList<PdfPage>> pages;
    const auto finished = VisionOCR::cropPage(page, boxes, VisionOCR::applyDpi, false, raw)
                              .then([&](const QList<PdfPage> &answer) { pages = answer; });
    EXPECT_TRUE(waitUntil([&] { return pages.has_value(); }));
    return pages.value_or(QList<PdfPage>());
}

int greyOf(const PdfPage &page)
{
    const QImage look = PageRaster::render(page, PageRaster::MaxDim{40}).value();
    return qGray(look.pixel(look.rect().center()));
}

TEST(CropPage, TakesThePageAsItIsShown)
{
    const struct {
        int rotation;
        QSizeF half;
        int first, last; ///< What is shown at the upper left and at the lower right.
    } cases[] = {
        {0,   {60, 90}, 0,   240},
        {90,  {90, 60}, 160, 80 },
        {180, {60, 90}, 240, 0  },
        {270, {90, 60}, 80,  160},
        {360, {60, 90}, 0,   240},
        {450, {90, 60}, 160, 80 },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.rotation);
        // The entry stands in the file as it is; setRotation would normalise it.
        PdfDocument made;
        ASSERT_TRUE(made.insertPage(pageOf(quarters({120, 180}), {120, 180}), 0));
        made.page(0)->setRotation(90);
        QByteArray bytes = made.bytes().value();
        ASSERT_TRUE(bytes.contains("/Rotate 90"));
        bytes.replace("/Rotate 90", QByteArray("/Rotate ") + QByteArray::number(c.rotation));
        const auto document = PdfDocument::fromBytes(bytes);
        ASSERT_EQ(document->page(0)->rotation(), c.rotation);

        const QList<PdfPage> pages = cropped(*document->page(0), {lowerRight, upperLeft});
        ASSERT_EQ(pages.size(), 2);
        for (const PdfPage &page : pages) {
            EXPECT_EQ(page.rotation(), 0);
            EXPECT_EQ(page.displayedSize(), c.half);
        }
        EXPECT_NEAR(greyOf(pages[0]), c.last, 2);
        EXPECT_NEAR(greyOf(pages[1]), c.first, 2);
    }
}

TEST(CropPage, RefusedBoxesAreLeftOut)
{
    const PdfPage page = pageOf(quarters({120, 180}), {120, 180});
    const Quad line{{{{0, 0}, {.2, .2}, {.4, .4}, {1, 1}}}};
    const QList<PdfPage> pages = cropped(page, {line, upperLeft, line, lowerRight});
    ASSERT_EQ(pages.size(), 2);
    EXPECT_NEAR(greyOf(pages[1]), 240, 2);
    EXPECT_TRUE(cropped(page, {line}).isEmpty());
    EXPECT_TRUE(cropped(page, {}).isEmpty());
}

TEST(CropPage, TheSmallestPageHasRegionsAndTheLargestIsRefused)
{
    const QList<PdfPage> pages = cropped(plainPage({1, 1}), {upperLeft});
    ASSERT_EQ(pages.size(), 1);
    EXPECT_EQ(pages[0].displayedSize(), QSizeF(0.5, 0.5));
    const PdfPage huge = plainPage({14'400, 14'400});
    EXPECT_TRUE(cropped(huge, {upperLeft}).isEmpty());
}

TEST(CropPage, TheRawPageServesIfItCanBeRead)
{
    const QTemporaryDir folder;
    const PdfPage page = plainPage({120, 180}, 128);
    const QUrl raw = QUrl::fromLocalFile(folder.filePath(QStringLiteral("raw.png")));
    ASSERT_TRUE(quarters({400, 600}).save(raw.toLocalFile()));
    const QList<PdfPage> fromRaw = cropped(page, {upperLeft, lowerRight}, raw);
    ASSERT_EQ(fromRaw.size(), 2);
    EXPECT_NEAR(greyOf(fromRaw[0]), 0, 2);
    EXPECT_EQ(fromRaw[0].displayedSize(), QSizeF(60, 90)) << "the page has the scale";

    const QUrl bad =
        QUrl::fromLocalFile(writeFile(folder.filePath(QStringLiteral("bad.png")), hugePng()));
    const QList<PdfPage> fromPage = cropped(page, {upperLeft}, bad);
    ASSERT_EQ(fromPage.size(), 1);
    EXPECT_NEAR(greyOf(fromPage[0]), 128, 2);
}

TEST(CropPage, StopsBetweenBoxesOnceNobodyWaits)
{
    const PdfPage page = pageOf(quarters({120, 180}), {120, 180});
    int done = 0;
    std::optional<qsizetype> made;
    const auto finished = VisionOCR::cropPage(
                              page, {upperLeft, lowerRight, upperLeft}, VisionOCR::applyDpi, false,
                              {}, [&](int boxes, int) { done = boxes; }, [&] { return done == 0; })
                              .then([&](const QList<PdfPage> &answer) { made = answer.size(); });
    ASSERT_TRUE(waitUntil([&] { return made.has_value(); }));
    EXPECT_EQ(made, 1);
    EXPECT_EQ(done, 1);
}

TEST(PageSource, ARawPageServesOnlyThePageThatItShows)
{
    const QTemporaryDir folder;
    const QUrl file = QUrl::fromLocalFile(folder.filePath(QStringLiteral("a.pdf")));
    PdfDocument document = documentOf({100, 200, 300});
    QStringList raw;
    for (const char *name : {"1", "2", "3"})
        raw.append(writeFile(folder.filePath(QString::fromUtf8(name)), "raw"));
    RawStore::adopt(raw, file);
    const auto serves = [&](int index) {
        return rawIfValid(document, index, file) == RawStore::pageURL(file, index) &&
               rawIfValid(document, index, file).has_value();
    };
    EXPECT_TRUE(serves(0) && serves(1) && serves(2));
    EXPECT_FALSE(rawIfValid(document, 3, file) || rawIfValid(document, -1, file));
    for (const int turn : {90, 180, 270}) {
        document.page(1)->setRotation(turn);
        EXPECT_FALSE(rawIfValid(document, 1, file)) << turn;
        EXPECT_TRUE(serves(2));
    }
    document.page(1)->setRotation(360);
    EXPECT_TRUE(serves(1));
    QFile::rename(RawStore::pageURL(file, 1)->toLocalFile(),
                  folder.filePath(QStringLiteral(".velmor_raw/a/page_007.png")));
    EXPECT_FALSE(rawIfValid(document, 1, file)) << "a gap in a sidecar of the right count";
    EXPECT_TRUE(serves(0));
    ASSERT_TRUE(document.removePage(2));
    EXPECT_FALSE(rawIfValid(document, 0, file));
}

} // namespace
} // namespace velmor
