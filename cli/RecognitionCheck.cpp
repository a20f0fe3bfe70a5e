#include "cli/RecognitionCheck.h"

#include "pipeline/TextRecognition.h"

#include <QCoroFuture>
#include <QtConcurrent>

namespace velmor {

QCoro::Task<bool> canRecognize(StatusDisplay &display)
{
    QFuture<std::optional<QString>> lookUp = QtConcurrent::run(recognitionProblem);
    const std::optional<QString> problem = co_await lookUp;
    if (problem)
        display.printMessage(*problem);
    co_return !problem;
}

} // namespace velmor
