#include "tests/Printers.h"
#include "tests/pipeline/TestPages.h"

#include <QPdfDocument>
#include <QPdfSelection>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr QSizeF a4(595.2, 841.92);

/// A saved document of one page with the lines.
class SavedPage {
public:
    explicit SavedPage(const std::vector<OcrLine> &lines)
        : path(folder.filePath(QStringLiteral("page.pdf")))
    {
        PdfDocument document;
        const auto image = losslessImage(noise({60, 80}));
        EXPECT_TRUE(document.insertPage(*PageRaster::makePage(*image, a4, lines), 0));
        writeFile(path, document.bytes().value());
    }

    [[nodiscard]] QString inPoppler() const
    {
        return QString::fromUtf8(
            outputOf(QStringLiteral("pdftotext"), {path, QStringLiteral("-")}));
    }

    [[nodiscard]] QString inMuPdf() const
    {
        return QString::fromUtf8(outputOf(QStringLiteral("mutool"),
                                          {QStringLiteral("draw"), QStringLiteral("-q"),
                                           QStringLiteral("-F"), QStringLiteral("txt"), path}));
    }

    [[nodiscard]] QString inPdfium() const
    {
        QPdfDocument document;
        document.load(path);
        return document.getAllText(0).text();
    }

    QTemporaryDir folder;
    QString path;
};

OcrLine line(const char *text, double y)
{
    const QString characters = QString::fromUtf8(text);
    const double width = 0.012 * static_cast<double>(characters.size());
    return {characters, QRectF(0.1, y, width, 0.02)};
}

/// Lines without the marks for writing direction that some readers add.
QStringList linesOf(QString text)
{
    static const QRegularExpression marks(QStringLiteral("[\u200e\u200f\u202a-\u202e\f\r]"));
    return text.remove(marks).split(u'\n', Qt::SkipEmptyParts);
}

TEST(TextLayer, EveryScriptComesBackExactlyInEveryReader)
{
    const char *const texts[] = {
        "Plain Latin, “quoted” — €5 (in brackets) \\ back",
        "Привет мир, как дела?",
        "Καλημέρα κόσμε",
        "∑ ≠ ∞ → ✓",
        "Zażółć gęślą jaźń",
        "中文测试文本，你好",
        "日本語のテキスト",
        "한국어 문장",
        "😀 emoji 𝔘",
        "ที่นี่ภาษาไทย",
        "مرحبا بالعالم",
        "שלום עולם",
    };
    std::vector<OcrLine> lines;
    QStringList expected;
    double y = 0.95;
    for (const char *text : texts) {
        lines.push_back(line(text, y -= 0.06));
        expected.append(QString::fromUtf8(text));
    }
    const SavedPage page(lines);
    EXPECT_EQ(linesOf(page.inPoppler()), expected);
    EXPECT_EQ(linesOf(page.inMuPdf()), expected);
    EXPECT_EQ(linesOf(page.inPdfium()), expected);
}

TEST(TextLayer, WordsStandWhereTheImageHasThem)
{
    for (const char *text : {"Left and right.", "Слева и справа", "illi WWWW mm", "左から右へ"}) {
        SCOPED_TRACE(text);
        const SavedPage page({
            {QString::fromUtf8(text), QRectF(0.1, 0.5, 0.7, 0.02)}
        });
        const QString boxes =
            QString::fromUtf8(outputOf(QStringLiteral("pdftotext"),
                                       {QStringLiteral("-bbox"), page.path, QStringLiteral("-")}));
        static const QRegularExpression ends(
            QStringLiteral("<word xMin=\"([0-9.]+)\" .*xMax=\"([0-9.]+)\""));
        double left = a4.width();
        double right = 0;
        for (auto words = ends.globalMatch(boxes); words.hasNext();) {
            const auto word = words.next();
            left = qMin(left, word.captured(1).toDouble());
            right = qMax(right, word.captured(2).toDouble());
        }
        EXPECT_NEAR(left, 0.1 * a4.width(), 2);
        EXPECT_NEAR(right, 0.8 * a4.width(), 2);
    }
}

TEST(TextLayer, LinesWithoutRoomAreLeftOut)
{
    const double onePoint = 1 / a4.height();
    const SavedPage page({
        {QStringLiteral("low"),    QRectF(0.1, 0.1, 0.5, onePoint)       },
        {QStringLiteral("tall"),   QRectF(0.1, 0.3, 0.5, 1.01 * onePoint)},
        {QStringLiteral("\u0301"), QRectF(0.1, 0.4, 0.5, 0.02)           },
    });
    const std::string text = page.inPoppler().toStdString();
    EXPECT_THAT(text, HasSubstr("tall"));
    EXPECT_THAT(text, Not(HasSubstr("low")));
}

TEST(TextLayer, TextThatIsNoTextDoesNoHarm)
{
    const QString broken = QStringLiteral("a\nb\tc") + QChar(0xd800) + QStringLiteral("d)(<>\\");
    const SavedPage page({
        {broken, QRectF(0.1, 0.5, 0.2, 0.02)}
    });
    outputOf(QStringLiteral("qpdf"), {QStringLiteral("--check"), page.path});
    EXPECT_EQ(linesOf(page.inPoppler()), QStringList(QStringLiteral("a b c\ufffdd)(<>\\")));
}

} // namespace
} // namespace velmor
