// The worker that talks to scanners: answers the engine's requests on the socket that is its
// standard input, until the engine hangs up. It alone loads SANE's backends, which may crash, hang
// or leak: a fault in one costs this process and not the engine.

#include "scanengine/drivers/sane/FrameSocket.h"
#include "scanengine/drivers/sane/WorkerMessages.h"
#include "scanengine/worker/HangUpWatch.h"
#include "scanengine/worker/OpenDevice.h"

#include <QElapsedTimer>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace scanengine;

/// Data are sent once there are so many bytes, or this long after the last ones.
constexpr qsizetype worthSending = 32 * 1024;
constexpr qint64 longestHoldMilliseconds = 100;
/// Between two looks for data with a backend that doesn't wait for them.
constexpr std::chrono::milliseconds dataRetry{5};

/// Answers one request after the other.
class Answering {
public:
    explicit Answering(FrameSocket &socket) : m_socket(socket) {}

    [[nodiscard]] OpenDevice &device() { return m_device; }
    void setWatch(const HangUpWatch *watch) { m_watch = watch; }

    void operator()(const SearchRequest &) { send(m_device.search()); }
    void operator()(const OpenRequest &request) { send(m_device.open(request.name)); }
    void operator()(const OptionsRequest &) { send(m_device.options()); }
    void operator()(const SetRequest &request) { send(m_device.set(request.setting)); }
    void operator()(const StartRequest &)
    {
        const StartedAnswer answer = m_device.start();
        send(answer);
        if (answer.status == SaneStatus::good)
            send(FrameEndAnswer{sendData()});
    }
    void operator()(const CancelRequest &)
    {
        m_device.cancel();
        send(CancelledAnswer());
    }

private:
    void send(const WorkerAnswer &answer)
    {
        // An engine that is gone is noticed by the watch.
        static_cast<void>(m_socket.send(encode(answer), QDeadlineTimer::Forever));
    }

    /// Sends the frame's data as they come; how the frame ended.
    SaneStatus sendData()
    {
        DataAnswer data;
        QElapsedTimer sinceSending;
        sinceSending.start();
        SaneStatus status = SaneStatus::good;
        while (status == SaneStatus::good && !m_watch->hasHungUp()) {
            const qsizetype before = data.bytes.size();
            status = m_device.read(data.bytes);
            if (status == SaneStatus::good && data.bytes.size() == before)
                std::this_thread::sleep_for(dataRetry);
            const bool isDue = data.bytes.size() >= worthSending ||
                               sinceSending.hasExpired(longestHoldMilliseconds) ||
                               status != SaneStatus::good;
            if (!isDue || data.bytes.isEmpty())
                continue;
            send(data);
            data.bytes.clear();
            sinceSending.restart();
        }
        return status;
    }

    FrameSocket &m_socket;
    OpenDevice m_device;
    const HangUpWatch *m_watch = nullptr;
};

/// Keeps the socket where no backend reads or prints by accident. -1 if that fails.
int takeSocketAside()
{
    const int socket = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    if (socket < 0 || nothing < 0 || ::dup2(nothing, STDIN_FILENO) < 0 ||
        ::dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        return -1;
    ::close(nothing);
    return socket;
}

} // namespace

int main()
{
    std::signal(SIGPIPE, SIG_IGN);
    const int descriptor = takeSocketAside();
    if (descriptor < 0)
        return EXIT_FAILURE;
    FrameSocket socket(descriptor, maxRequestFrame);
    Answering answering(socket);
    HangUpWatch watch(descriptor, answering.device());
    answering.setWatch(&watch);
    for (;;) {
        const auto received = socket.receive(QDeadlineTimer::Forever);
        const auto *frame = std::get_if<QByteArray>(&received);
        const auto request = frame ? decodeRequest(*frame) : std::nullopt;
        if (!request)
            break;
        std::visit(answering, *request);
    }
    watch.noticed();
    socket.shutDown(); // after a request that makes no sense the engine is still there
    return EXIT_SUCCESS;
}
