#pragma once

#include "scanengine/drivers/Driver.h"
#include "scanengine/drivers/sane/StatusText.h"
#include "scanengine/drivers/sane/WorkerMessages.h"
#include "scanengine/drivers/sane/WorkerProcess.h"

#include <chrono>
#include <memory>
#include <stop_token>
#include <utility>
#include <variant>

namespace scanengine {

/// A step that a worker is asked for: how long it may take, and what is wrong if it takes longer.
struct WorkerStep {
    std::chrono::milliseconds limit;
    WorkerTrouble overrun;
};

/// What came of a step. After anything but an answer the worker is to be ended.
template <typename Answer> using Reply = std::variant<Answer, Cancelled, WorkerTrouble>;

/// The engine's side of a worker process: asks, and waits for answers within limits.
///
/// Nothing that the worker does or sends harms the engine: a worker that ends, hangs or answers
/// nonsense is reported as trouble. One thread at a time.
class SaneWorker {
public:
    /// Null when the process can't be started.
    [[nodiscard]] static std::unique_ptr<SaneWorker> start(const WorkerLaunch &launch);

    /// Sends `request` and waits for its answer, until `stop` at most.
    template <typename Answer>
    [[nodiscard]] Reply<Answer> ask(const WorkerRequest &request, const WorkerStep &step,
                                    const std::stop_token &stop)
    {
        if (!send(request, step))
            return WorkerTrouble::crashed;
        Reply<WorkerAnswer> reply = receive(step, stop);
        if (auto *answer = std::get_if<WorkerAnswer>(&reply)) {
            if (auto *wanted = std::get_if<Answer>(answer))
                return std::move(*wanted);
            return WorkerTrouble::crashed;
        }
        if (const auto *trouble = std::get_if<WorkerTrouble>(&reply))
            return *trouble;
        return Cancelled{};
    }

    /// Waits for the next answer, until `stop` at most.
    [[nodiscard]] Reply<WorkerAnswer> receive(const WorkerStep &step, const std::stop_token &stop);

    /// Has the worker break off what it does, let its device go and end; kills it after `patience`,
    /// and sooner if it hangs already.
    void end(std::chrono::milliseconds patience);

private:
    explicit SaneWorker(std::unique_ptr<WorkerProcess> process);

    [[nodiscard]] bool send(const WorkerRequest &request, const WorkerStep &step);

    std::unique_ptr<WorkerProcess> m_process; ///< Null once it has ended.
    bool m_hangs = false;
};

} // namespace scanengine
