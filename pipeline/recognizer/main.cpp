// The text recognition worker: answers requests on the socket that is its standard input until the
// other end closes. A program of its own so that a fault in the recognition costs a page at most.

#include "pipeline/recognizer/FrameChannel.h"
#include "pipeline/recognizer/RecognizerMessages.h"
#include "pipeline/recognizer/TesseractReader.h"

#include <cstdlib>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace velmor;

/// Ends the process as soon as the application is gone, even in the midst of a page.
void leaveWithTheApplication()
{
    std::thread([] {
        pollfd entry{.fd = STDIN_FILENO, .events = POLLRDHUP, .revents = 0};
        while (poll(&entry, 1, -1) <= 0) {
        }
        _exit(EXIT_SUCCESS);
    }).detach();
}

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
    leaveWithTheApplication();
    Answering answering;
    for (;;) {
        const auto frame =
            FrameChannel::read(STDIN_FILENO, maxRequestFrame, QDeadlineTimer::Forever);
        if (!frame)
            return EXIT_SUCCESS;
        const auto request = decodeRequest(*frame);
        if (!request)
            return EXIT_FAILURE;
        const RecognizerAnswer answer = std::visit(answering, *request);
        if (!FrameChannel::write(STDIN_FILENO, encode(answer), QDeadlineTimer::Forever))
            return EXIT_SUCCESS;
    }
}
