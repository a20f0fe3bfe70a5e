#include "pipeline/workers/WorkerLoop.h"

#include "pipeline/workers/FrameChannel.h"

#include <cstdlib>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace velmor {

namespace {

/// Ends the process as soon as the application is gone.
void leaveWithTheApplication()
{
    std::thread([] {
        pollfd entry{.fd = STDIN_FILENO, .events = POLLRDHUP, .revents = 0};
        while (poll(&entry, 1, -1) <= 0) {
        }
        _exit(EXIT_SUCCESS);
    }).detach();
}

} // namespace

int runWorker(qint64 longestFrame,
              const std::function<bool(const QByteArray &frame, const FrameSink &reply)> &answer)
{
    leaveWithTheApplication();
    bool isHeard = true;
    const FrameSink reply = [&isHeard](const QByteArray &frame) {
        isHeard = FrameChannel::write(STDIN_FILENO, frame, QDeadlineTimer::Forever);
        return isHeard;
    };
    for (;;) {
        const auto frame = FrameChannel::read(STDIN_FILENO, longestFrame, QDeadlineTimer::Forever);
        if (!frame)
            return EXIT_SUCCESS;
        if (!answer(*frame, reply))
            return isHeard ? EXIT_FAILURE : EXIT_SUCCESS;
    }
}

} // namespace velmor
