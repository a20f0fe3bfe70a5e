#include "scanengine/drivers/sane/SaneWorker.h"

#include "scanengine/Log.h"

#include <algorithm>
#include <functional>
#include <sys/eventfd.h>
#include <unistd.h>

namespace scanengine {
namespace {

/// For a worker that hangs: it may still get its device to come to rest.
constexpr std::chrono::milliseconds patienceWithHanging{3'000};

/// A descriptor that has something to read once a stop was requested.
class StopDescriptor {
public:
    explicit StopDescriptor(const std::stop_token &stop)
        : m_descriptor(::eventfd(0, EFD_CLOEXEC)),
          m_callback(stop, [this] { ::eventfd_write(m_descriptor.number, 1); })
    {
    }

    [[nodiscard]] int number() const { return m_descriptor.number; }

private:
    struct Descriptor {
        explicit Descriptor(int owned) : number(owned) {}
        ~Descriptor() { ::close(number); }
        Descriptor(const Descriptor &) = delete;
        Descriptor &operator=(const Descriptor &) = delete;

        int number;
    };

    Descriptor m_descriptor;
    std::stop_callback<std::function<void()>> m_callback;
};

} // namespace

std::unique_ptr<SaneWorker> SaneWorker::start(const WorkerLaunch &launch)
{
    auto process = WorkerProcess::start(launch);
    if (!process) {
        qCWarning(logging).noquote() << "The worker" << launch.program << "can't be started";
        return nullptr;
    }
    return std::unique_ptr<SaneWorker>(new SaneWorker(std::move(process)));
}

SaneWorker::SaneWorker(std::unique_ptr<WorkerProcess> process) : m_process(std::move(process)) {}

bool SaneWorker::send(const WorkerRequest &request, const WorkerStep &step)
{
    return m_process && m_process->socket().send(encode(request), QDeadlineTimer(step.limit));
}

Reply<WorkerAnswer> SaneWorker::receive(const WorkerStep &step, const std::stop_token &stop)
{
    if (!m_process)
        return WorkerTrouble::crashed;
    const StopDescriptor stopDescriptor(stop);
    const FrameSocket::Received received =
        m_process->socket().receive(QDeadlineTimer(step.limit), stopDescriptor.number());
    if (std::holds_alternative<FrameSocket::Woken>(received))
        return Cancelled{};
    if (std::holds_alternative<FrameSocket::TooLate>(received)) {
        qCWarning(logging) << "The worker hangs, after" << step.limit.count() << "ms";
        m_hangs = true;
        return step.overrun;
    }
    const auto *frame = std::get_if<QByteArray>(&received);
    auto answer = frame ? decodeAnswer(*frame) : std::nullopt;
    if (!answer) {
        qCWarning(logging) << (frame ? "The worker answers nonsense" : "The worker has ended");
        return WorkerTrouble::crashed;
    }
    return std::move(*answer);
}

void SaneWorker::end(std::chrono::milliseconds patience)
{
    const auto granted = m_hangs ? std::min(patience, patienceWithHanging) : patience;
    if (m_process && !m_process->end(granted))
        qCWarning(logging) << "The worker did not end by itself and is killed";
    m_process.reset();
}

} // namespace scanengine
