#include "pipeline/VisionOCR.h"

#include "pipeline/RawStore.h"
#include "tests/Waiting.h"
#include "tests/pipeline/TestPages.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::Pair;

class VisionOCRTest : public testing::Test {
protected:
    QString saved(const QImage &image, const char *name, const char *format = nullptr)
    {
        const QString path = folder.filePath(QString::fromUtf8(name));
        EXPECT_TRUE(image.save(path, format));
        return path;
    }

    /// Assembles without recognition; the answer of the task.
    bool assembled(const QStringList &paths, double dpi = 300)
    {
        const auto write = [&](const PdfDocument &document) {
            bytes = document.bytes();
            return true;
        };
        return answerOf(VisionOCR::assemblePdf(paths, dpi, false, write, {}));
    }

    static bool answerOf(QCoro::Task<bool> task)
    {
        std::optional<bool> result;
        const auto finished = std::move(task).then([&](bool answered) { result = answered; });
        EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
        return result.value_or(false);
    }

    QTemporaryDir folder;
    std::optional<QByteArray> bytes; ///< What `write` got.
};

TEST_F(VisionOCRTest, OnlyPngIsCompressed)
{
    const QImage image = noise({400, 400});
    const QString jpeg = saved(image, "a.jpg");
    const struct {
        const char *what;
        QString path, filter;
    } cases[] = {
        {"PNG in capitals", saved(image, "c.PNG"), QStringLiteral("/DCTDecode")},
        {"TIFF", saved(image, "d.tiff"), QStringLiteral("/FlateDecode")},
        {"PNG by another name", saved(image, "e.tiff", "PNG"), QStringLiteral("/FlateDecode")},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        ASSERT_TRUE(assembled({c.path}));
        const QString pdf = writeFile(folder.filePath(QStringLiteral("a.pdf")), bytes.value());
        const QString objects =
            QString::fromUtf8(outputOf(QStringLiteral("qpdf"), {QStringLiteral("--json"), pdf}));
        EXPECT_TRUE(objects.contains(QStringLiteral("\"/Filter\": \"%1\"").arg(c.filter)));
    }
    ASSERT_TRUE(assembled({jpeg}));
    EXPECT_TRUE(bytes->contains(readFile(jpeg)));
}

TEST_F(VisionOCRTest, APageThatCannotBeReadFailsTheWhole)
{
    const QString good = saved(noise({30, 30}), "good.png");
    const QString bad[] = {
        folder.filePath(QStringLiteral("missing.png")),
        writeFile(folder.filePath(QStringLiteral("text.png")), "no picture"),
        writeFile(folder.filePath(QStringLiteral("empty.png")), {}),
        writeFile(folder.filePath(QStringLiteral("huge.png")), hugePng()),
    };
    for (const QString &path : bad) {
        SCOPED_TRACE(qPrintable(path));
        EXPECT_FALSE(assembled({good, path, good}));
        EXPECT_FALSE(bytes) << "a document was written";
        EXPECT_TRUE(QFileInfo::exists(good));
    }
}

/// Levels on saved documents, without recognition.
class ApplyMagicTest : public VisionOCRTest {
protected:
    /// A saved scan of pages of noise, with its raw images beside it.
    QUrl scan(const char *name, const QList<quint32> &seeds)
    {
        QStringList paths;
        for (const quint32 seed : seeds)
            paths.append(saved(noise({150, 200}, seed),
                               QByteArray::number(seed).append(".png").constData()));
        EXPECT_TRUE(assembled(paths, 150));
        const QUrl url = location(name);
        writeFile(url.toLocalFile(), bytes.value());
        RawStore::adopt(paths, url);
        return url;
    }

    QUrl location(const char *name) const
    {
        return QUrl::fromLocalFile(folder.filePath(QString::fromUtf8(name)));
    }

    /// Applies levels and saves what comes of it; the answer of the task.
    bool applied(MagicSettings levels, const QList<QUrl> &files)
    {
        const auto write = [this](const PdfDocument &document, const QUrl &url) {
            written.append(url);
            return !QFile::exists(url.toLocalFile() + QStringLiteral(".locked")) &&
                   !writeFile(url.toLocalFile(), document.bytes().value()).isEmpty();
        };
        return answerOf(VisionOCR::applyMagic(levels, files, 150, false, write));
    }

    static QImage look(const QUrl &url, int page = 0)
    {
        return PageRaster::render(*PdfDocument::open(url)->page(page), PageRaster::Dpi{150})
            .value();
    }

    static constexpr MagicSettings dark{0.3, 1.0, 2.0};
    static constexpr MagicSettings light{0.0, 0.7, 0.6};
    QList<QUrl> written;
};

TEST_F(ApplyMagicTest, WithRawPagesTheLastLevelsAloneCount)
{
    const QUrl twice = scan("twice.pdf", {1, 2});
    const QUrl once = scan("once.pdf", {1, 2});
    ASSERT_TRUE(applied(dark, {twice}));
    ASSERT_TRUE(applied(light, {twice, once}));
    for (const int page : {0, 1})
        EXPECT_EQ(look(twice, page), look(once, page));
    EXPECT_EQ(RawStore::pageCount(twice), 2);
}

TEST_F(ApplyMagicTest, WithoutOnesForAllPagesLevelsAddUp)
{
    const QUrl twice = scan("twice.pdf", {1, 2, 3});
    const QUrl once = scan("once.pdf", {1, 2, 3});
    QFile::remove(RawStore::pageURL(twice, 2)->toLocalFile());
    ASSERT_TRUE(applied(dark, {twice}));
    ASSERT_TRUE(applied(light, {twice, once}));
    EXPECT_NE(look(twice), look(once));
}

TEST_F(ApplyMagicTest, OnlyATurnedPageIsTakenFromTheDocument)
{
    const QUrl url = scan("a.pdf", {1, 2, 3});
    auto document = PdfDocument::open(url);
    document->page(1)->setRotation(180);
    document->page(2)->setRotation(90);
    writeFile(url.toLocalFile(), document->bytes().value());
    for (const int page : {0, 1, 2}) {
        QImage other(150, 200, QImage::Format_Grayscale8);
        other.fill(255);
        other.save(RawStore::pageURL(url, page)->toLocalFile());
    }
    ASSERT_TRUE(applied({0, 1, 1}, {url}));
    EXPECT_EQ(qGray(look(url, 0).pixel(75, 75)), 255);
    EXPECT_NE(look(url, 1).convertToFormat(QImage::Format_Grayscale8),
              look(url, 0).convertToFormat(QImage::Format_Grayscale8));
    const auto result = PdfDocument::open(url);
    EXPECT_EQ(result->page(1)->rotation(), 0);
    EXPECT_EQ(result->page(2)->mediaBox().size(), QSizeF(96, 72));
}

TEST_F(ApplyMagicTest, FilesFailOneByOne)
{
    const QUrl good = scan("good.pdf", {1});
    writeFile(RawStore::pageURL(good, 0)->toLocalFile(), "no picture, as the PDF still has one");
    const QUrl locked = scan("locked.pdf", {2});
    writeFile(locked.toLocalFile() + QStringLiteral(".locked"), {});
    const QUrl empty = location("empty.pdf");
    writeFile(empty.toLocalFile(), PdfDocument().bytes().value());
    const QUrl broken = location("broken.pdf");
    writeFile(broken.toLocalFile(), "no document");
    const QUrl huge = location("huge.pdf");
    PdfDocument tooLarge = documentOf({100, 200});
    ASSERT_TRUE(tooLarge.insertPage(plainPage({14'400, 14'400}), 1));
    writeFile(huge.toLocalFile(), tooLarge.bytes().value());

    EXPECT_FALSE(applied(dark, {broken, empty, location("none.pdf"), huge, locked, good}));
    EXPECT_THAT(written, ElementsAre(locked, good));
}

TEST_F(ApplyMagicTest, ARebuiltDocumentKeepsWhatIsNotItsPages)
{
    const QByteArray rich = "%PDF-1.5\n1 0 obj <</Type /Catalog /Pages 2 0 R /Outlines 5 0 R"
                            " /PageLabels <</Nums [0 <</S /r>>]>> >> endobj\n"
                            "2 0 obj <</Type /Pages /Kids [3 0 R] /Count 1>> endobj\n"
                            "3 0 obj <</Type /Page /Parent 2 0 R /MediaBox [0 0 200 100]>> endobj\n"
                            "5 0 obj <</First 6 0 R /Last 6 0 R /Count 1>> endobj\n"
                            "6 0 obj <</Title (Chapter) /Parent 5 0 R /Dest [3 0 R /Fit]>> endobj\n"
                            "7 0 obj <</Title (My scan) /Producer (Other)>> endobj\n"
                            "trailer <</Root 1 0 R /Info 7 0 R>>\n";
    const QUrl url = location("rich.pdf");
    writeFile(url.toLocalFile(), rich);
    qint64 size = 0;
    for (int round = 0; round < 10; ++round) {
        ASSERT_TRUE(applied(light, {url}));
        const qint64 now = QFileInfo(url.toLocalFile()).size();
        size = round == 0 ? now : size;
        EXPECT_LE(now, size + size / 10);
    }
    outputOf(QStringLiteral("qpdf"), {QStringLiteral("--check"), url.toLocalFile()});
    const QByteArray json =
        outputOf(QStringLiteral("qpdf"), {QStringLiteral("--json=1"), url.toLocalFile()});
    for (const char *kept : {"\"title\": \"Chapter\"", "\"destpageposfrom1\": 1", "\"My scan\"",
                             "\"Other\"", "\"/S\": \"/r\""})
        EXPECT_TRUE(json.contains(kept)) << kept;
}

TEST_F(VisionOCRTest, ADocumentIsOnlyReadAnewAsAWhole)
{
    qputenv("VELMOR_RECOGNIZER", "/none");
    const auto readAnew = [this](const PdfDocument &document) {
        const QUrl url = QUrl::fromLocalFile(
            writeFile(folder.filePath(QStringLiteral("a.pdf")), document.bytes().value()));
        int writes = 0;
        const auto write = [&](const PdfDocument &written, const QUrl &location) {
            ++writes;
            return written.pageCount() == document.pageCount() && location == url;
        };
        const bool answer = answerOf(VisionOCR::ocrDocument(url, 72, write));
        return std::pair(answer, writes);
    };
    EXPECT_THAT(readAnew(documentOf({100, 200})), Pair(true, 1));
    EXPECT_THAT(readAnew(PdfDocument()), Pair(false, 0));
    PdfDocument tooLarge = documentOf({100, 200});
    ASSERT_TRUE(tooLarge.insertPage(plainPage({40'000, 40'000}), 1));
    EXPECT_THAT(readAnew(tooLarge), Pair(false, 0));
}

} // namespace
} // namespace velmor
