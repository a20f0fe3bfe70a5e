#include "pipeline/TextRecognition.h"

#include "PrintedPage.h"
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

const QStringList &english()
{
    static const QStringList lines{
        QStringLiteral("The harbour master wrote in his book that the ship had come in"),
        QStringLiteral("before the storm, with a cargo of tea and 240 bales of cotton."),
        QStringLiteral("Nobody was hurt, but two of the sails were lost at sea and the"),
        QStringLiteral("mast will have to be replaced. It was the third time that year,"),
        QStringLiteral("and the owners asked him for a full report of what was done."),
    };
    return lines;
}

const QStringList &german()
{
    static const QStringList lines{
        QStringLiteral("Der Hafenmeister schrieb in sein Buch, dass das Schiff noch vor"),
        QStringLiteral("dem Sturm eingelaufen war. Für die Eigentümer war es schon das"),
        QStringLiteral("dritte Mal in diesem Jahr, und sie verlangten von ihm einen"),
        QStringLiteral("ausführlichen Bericht. Die Segel gingen über Bord, und der große"),
        QStringLiteral("Mast muss auf der Werft ersetzt werden, bevor es weitergeht."),
    };
    return lines;
}

std::string textOf(const std::vector<OcrLine> &lines)
{
    QStringList texts;
    for (const OcrLine &line : lines)
        texts.append(line.text);
    return texts.join(u'\n').toStdString();
}

std::string textOf(const QStringList &lines)
{
    return lines.join(u'\n').toStdString();
}

/// Chosen before the first page is read.
const bool realWorkerChosen = qputenv("VELMOR_RECOGNIZER", REAL_RECOGNIZER);

TEST(TextRecognition, ReadsAPageLineByLineAndPlacesEachLine)
{
    const auto lines = recognizeText(printedPage(english()));
    ASSERT_TRUE(realWorkerChosen);
    ASSERT_EQ(textOf(lines), textOf(english()));
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

TEST(TextRecognition, ReadsPagesThatLieTurned)
{
    const QImage upright = printedPage(english());
    for (int degrees : {180, 90, 270}) {
        const auto lines = recognizeText(upright.transformed(QTransform().rotate(degrees)));
        EXPECT_EQ(textOf(lines), textOf(english())) << degrees;
    }
}

TEST(TextRecognition, ChangesTheLanguageWithThePage)
{
    EXPECT_EQ(textOf(recognizeText(printedPage(english()))), textOf(english()));
    EXPECT_EQ(textOf(recognizeText(printedPage(german()))), textOf(german()));
    EXPECT_EQ(textOf(recognizeText(printedPage(english()))), textOf(english()));
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
    const QImage upright = printedPage(english());
    EXPECT_EQ(textOf(reader.read(upright)), textOf(english()));
    EXPECT_EQ(textOf(reader.read(upright.transformed(QTransform().rotate(180)))), textOf(english()))
        << "the model for turns is not installed";
}

} // namespace
} // namespace velmor
