#include "pipeline/TextRecognition.h"

#include "pipeline/recognition/PageReader.h"
#include "pipeline/workers/WorkerProgram.h"

namespace velmor {

namespace {

/// The worker processes are dear to start, so they are shared by all callers.
PageReader &sharedReader()
{
    static PageReader reader(
        {.workerProgram = workerProgram(QStringLiteral("velmor-recognizer"), "VELMOR_RECOGNIZER")});
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
