#include "pipeline/TextRecognition.h"

#include "pipeline/Renderer.h"
#include "pipeline/recognition/PageReader.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTransform>
#include <gmock/gmock.h>

// The real worker with the installed models. English and German are needed.

namespace velmor {
namespace {

using testing::IsEmpty;

// Without what has a meaning in a PDF, such as brackets; Latin-1 only.
constexpr const char *english = "The harbour master wrote in his book that the ship had come in\n"
                                "before the storm, with a cargo of tea and 240 bales of cotton.\n"
                                "Nobody was hurt, but two of the sails were lost at sea and the\n"
                                "mast will have to be replaced. It was the third time that year,\n"
                                "and the owners asked him for a full report of what was done.";
constexpr const char *german = "Der Hafenmeister schrieb in sein Buch, dass das Schiff noch vor\n"
                               "dem Sturm eingelaufen war. Für die Eigentümer war es schon das\n"
                               "dritte Mal in diesem Jahr, und sie verlangten von ihm einen\n"
                               "ausführlichen Bericht. Die Segel gingen über Bord, und der große\n"
                               "Mast muss auf der Werft ersetzt werden, bevor es weitergeht.";

/// Where the first line of a printed page stands, in points from the lower left corner of A4.
constexpr int firstBaseline = 760;
constexpr int printedMargin = 70;
/// Points from one line to the next; the letters are of 12 points.
constexpr int printedLeading = 18;
constexpr QSize a4(2480, 3508);
constexpr int dotsPerMeter = 11'811;

QByteArray pdfOf(const char *text)
{
    QByteArray content = "BT /F 12 Tf " + QByteArray::number(printedLeading) + " TL " +
                         QByteArray::number(printedMargin) + ' ' +
                         QByteArray::number(firstBaseline) + " Td\n";
    for (const QString &line : QString::fromUtf8(text).split(u'\n'))
        content += '(' + line.toLatin1() + ") Tj T*\n";
    content += "ET\n";
    // No cross-reference table: the renderer finds the objects by itself.
    return "%PDF-1.4\n"
           "1 0 obj <</Type /Catalog /Pages 2 0 R>> endobj\n"
           "2 0 obj <</Type /Pages /Kids [3 0 R] /Count 1>> endobj\n"
           "3 0 obj <</Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R\n"
           "/Resources <</Font <</F <</Type /Font /Subtype /Type1 /BaseFont /Helvetica\n"
           "/Encoding /WinAnsiEncoding>>>>>>>> endobj\n"
           "4 0 obj <</Length " +
           QByteArray::number(content.size()) + ">> stream\n" + content +
           "endstream endobj\ntrailer <</Root 1 0 R>>\n";
}

/// A sheet of A4 at 300 dpi with `text` printed in Helvetica.
QImage printedPage(const char *text)
{
    QImage page = Renderer::shared().picture(pdfOf(text), a4).value_or(QImage());
    page.setDotsPerMeterX(dotsPerMeter);
    page.setDotsPerMeterY(dotsPerMeter);
    return page;
}

std::string textOf(const std::vector<OcrLine> &lines)
{
    QStringList texts;
    for (const OcrLine &line : lines)
        texts.append(line.text);
    return texts.join(u'\n').toStdString();
}

/// Chosen before the first page is read.
const bool realWorkerChosen = qputenv("VELMOR_RECOGNIZER", REAL_RECOGNIZER);

TEST(TextRecognition, ReadsAPageLineByLineAndPlacesEachLine)
{
    const auto lines = recognizeText(printedPage(english));
    ASSERT_TRUE(realWorkerChosen);
    ASSERT_EQ(textOf(lines), english);
    for (size_t i = 0; i < lines.size(); ++i) {
        const double baseline = firstBaseline - static_cast<double>(i) * printedLeading;
        const QRectF &box = lines[i].box;
        EXPECT_NEAR(box.left() * 595, printedMargin, 3);
        EXPECT_LT(box.top() * 842, baseline + 2);
        EXPECT_GT(box.top() * 842, baseline - 5);
        EXPECT_GT(box.bottom() * 842, baseline + 7);
        EXPECT_LT(box.bottom() * 842, baseline + 13);
    }
}

TEST(TextRecognition, ReadsAPageOfOneBitAPixel)
{
    const QImage page = printedPage(english).convertToFormat(QImage::Format_Mono,
                                                             Qt::MonoOnly | Qt::ThresholdDither);
    EXPECT_EQ(textOf(recognizeText(page)), english);
}

TEST(TextRecognition, ReadsPagesThatLieTurned)
{
    const QImage upright = printedPage(english);
    for (int degrees : {180, 90, 270}) {
        const auto lines = recognizeText(upright.transformed(QTransform().rotate(degrees)));
        EXPECT_EQ(textOf(lines), english) << degrees;
    }
}

TEST(TextRecognition, ChangesTheLanguageWithThePage)
{
    EXPECT_EQ(textOf(recognizeText(printedPage(german))), german);
    EXPECT_EQ(textOf(recognizeText(printedPage(english))), english);
}

TEST(TextRecognition, FindsNoTextInAPicture)
{
    QImage picture(620, 877, QImage::Format_RGB32);
    QRandomGenerator random(5);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int grey = (x / 9 * 31 + y / 13 * 17) % 160 + random.bounded(90);
            picture.setPixel(x, y, qRgb(grey, 255 - grey, grey / 2));
        }
    }
    EXPECT_THAT(textOf(recognizeText(picture)), IsEmpty());
}

/// Shows the workers a folder of models of the test's own.
class ModelFolder {
public:
    ModelFolder() { qputenv("TESSDATA_PREFIX", m_folder.path().toUtf8()); }
    ~ModelFolder() { qunsetenv("TESSDATA_PREFIX"); }
    ModelFolder(const ModelFolder &) = delete;
    ModelFolder &operator=(const ModelFolder &) = delete;

    [[nodiscard]] bool hasInstalledModel(const QString &file) const
    {
        const QDir installed(QStringLiteral("/usr/share/tesseract-ocr/5/tessdata"));
        return QFile::link(installed.filePath(file), m_folder.filePath(file));
    }

private:
    QTemporaryDir m_folder;
};

TEST(TextRecognition, SaysThatModelsAreMissing)
{
    const ModelFolder empty;
    PageReader reader({.workerProgram = QStringLiteral(REAL_RECOGNIZER)});
    EXPECT_THAT(reader.problem().value_or(QString()).toStdString(),
                testing::HasSubstr("No languages"));
}

TEST(TextRecognition, CopesWithEnglishAlone)
{
    const ModelFolder folder;
    ASSERT_TRUE(folder.hasInstalledModel(QStringLiteral("eng.traineddata")));
    PageReader reader({.workerProgram = QStringLiteral(REAL_RECOGNIZER)});
    EXPECT_EQ(reader.problem(), std::nullopt);
    const QImage upright = printedPage(english);
    EXPECT_EQ(textOf(reader.read(upright)), english);
    EXPECT_EQ(textOf(reader.read(upright.transformed(QTransform().rotate(180)))), english)
        << "the model for turns is not installed";
}

} // namespace
} // namespace velmor
