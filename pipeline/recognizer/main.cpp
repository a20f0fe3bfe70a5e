// The text recognition worker: answers requests until the application is gone. A program of its own
// so that a fault in the recognition costs a page at most.

#include "pipeline/recognizer/RecognizerMessages.h"
#include "pipeline/recognizer/TesseractReader.h"
#include "pipeline/workers/WorkerLoop.h"

namespace {

using namespace velmor;

template <typename Answer> RecognizerAnswer orFailure(std::optional<Answer> answer)
{
    if (answer)
        return std::move(*answer);
    return FailureAnswer();
}

struct Answering {
    TesseractReader reader;

    RecognizerAnswer operator()(const LanguagesRequest &)
    {
        return LanguagesAnswer{reader.languages()};
    }
    RecognizerAnswer operator()(const TextRequest &request)
    {
        return orFailure(reader.text(request));
    }
    RecognizerAnswer operator()(const OrientationRequest &request)
    {
        return orFailure(reader.orientation(request));
    }
};

} // namespace

int main()
{
    Answering answering;
    return runWorker(maxRequestFrame, [&](const QByteArray &frame, const FrameSink &reply) {
        const auto request = decodeRequest(frame);
        return request && reply(encode(std::visit(answering, *request)));
    });
}
