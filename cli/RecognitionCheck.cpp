#include "cli/RecognitionCheck.h"

#include "pipeline/TextRecognition.h"
#include "pipeline/WithoutExceptions.h"

#include <QCoroFuture>

namespace velmor {

QCoro::Task<bool> canRecognize(StatusDisplay &display)
{
    QFuture<std::optional<QString>> lookUp = inBackground(recognitionProblem);
    const std::optional<QString> problem = co_await lookUp;
    if (problem)
        display.printMessage(*problem);
    co_return !problem;
}

} // namespace velmor
