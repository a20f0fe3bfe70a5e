#include "pipeline/TextRecognition.h"

#include "pipeline/recognition/PageReader.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace velmor {

namespace {

QString workerProgram()
{
    const QString chosen = qEnvironmentVariable("VELMOR_RECOGNIZER");
    if (!chosen.isEmpty())
        return chosen;
    const QString folder = QCoreApplication::applicationDirPath();
    const QString beside = folder + QStringLiteral("/velmor-recognizer");
    if (QFileInfo(beside).isExecutable())
        return beside;
    return folder + QStringLiteral("/../libexec/velmor/velmor-recognizer");
}

/// The worker processes are dear to start, so they are shared by all callers.
PageReader &sharedReader()
{
    static PageReader reader({.workerProgram = workerProgram()});
    return reader;
}

} // namespace

std::vector<OcrLine> recognizeText(const QImage &image)
{
    return sharedReader().read(image);
}

std::optional<QString> recognitionProblem()
{
    return sharedReader().problem();
}

} // namespace velmor
