#include "pipeline/VisionOCR.h"

#include "tests/Waiting.h"
#include "tests/pipeline/TestPages.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
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
    bool assembled(const QStringList &paths, double dpi = 300, bool answer = true)
    {
        std::optional<bool> result;
        const auto write = [&, answer](const PdfDocument &document) {
            bytes = document.bytes();
            return answer;
        };
        const auto note = [this](int done, int total) {
            progress.append({done, total});
        };
        auto task = VisionOCR::assemblePdf(paths, dpi, false, write, note);
        const auto finished = std::move(task).then([&](bool answered) { result = answered; });
        EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
        return result.value_or(false);
    }

    QTemporaryDir folder;
    std::optional<QByteArray> bytes; ///< What `write` got.
    QList<std::pair<int, int>> progress;
};

TEST_F(VisionOCRTest, PagesHaveTheirPaperSizeAndOrder)
{
    ASSERT_TRUE(
        assembled({saved(noise({2480, 3508}), "1.png"), saved(noise({300, 600}), "2.png")}));
    const auto document = PdfDocument::fromBytes(bytes.value());
    ASSERT_TRUE(document);
    ASSERT_EQ(document->pageCount(), 2);
    EXPECT_NEAR(document->page(0)->mediaBox().width(), 595.2, 0.001);
    EXPECT_NEAR(document->page(0)->mediaBox().height(), 841.92, 0.001);
    EXPECT_EQ(document->page(1)->mediaBox().size(), QSizeF(72, 144));
    EXPECT_THAT(progress, ElementsAre(Pair(0, 2), Pair(1, 2), Pair(2, 2)));
}

TEST_F(VisionOCRTest, OnlyPngIsCompressed)
{
    const QImage image = noise({400, 400});
    const QString jpeg = saved(image, "a.jpg");
    const struct {
        const char *what;
        QString path, filter;
    } cases[] = {
        {"PNG", saved(image, "b.png"), QStringLiteral("/DCTDecode")},
        {"PNG in capitals", saved(image, "c.PNG"), QStringLiteral("/DCTDecode")},
        {"JPEG", jpeg, QStringLiteral("/DCTDecode")},
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
    QFile file(jpeg);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_TRUE(assembled({jpeg}));
    EXPECT_TRUE(bytes->contains(file.readAll()));
}

TEST_F(VisionOCRTest, APageThatCannotBeReadFailsTheWhole)
{
    const QString good = saved(noise({30, 30}), "good.png");
    const QString bad[] = {
        folder.filePath(QStringLiteral("missing.png")),
        writeFile(folder.filePath(QStringLiteral("text.png")), "no picture"),
        writeFile(folder.filePath(QStringLiteral("empty.png")), {}),
        writeFile(folder.filePath(QStringLiteral("huge.png")), emptyPng({60'000, 60'000})),
    };
    for (const QString &path : bad) {
        SCOPED_TRACE(qPrintable(path));
        EXPECT_FALSE(assembled({good, path, good}));
        EXPECT_FALSE(bytes) << "a document was written";
        EXPECT_TRUE(QFileInfo::exists(good));
    }
}

TEST_F(VisionOCRTest, TheWriterHasTheLastWord)
{
    EXPECT_FALSE(assembled({saved(noise({30, 30}), "a.png")}, 300, false));
    EXPECT_TRUE(assembled({}));
    EXPECT_EQ(PdfDocument::fromBytes(bytes.value())->pageCount(), 0);
}

} // namespace
} // namespace velmor
