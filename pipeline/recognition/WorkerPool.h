#pragma once

#include "pipeline/recognizer/RecognizerMessages.h"
#include "pipeline/workers/WorkerProcess.h"

#include <QDeadlineTimer>

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace velmor {

/// Two worker processes that answer requests at the same time.
///
/// They are started when first asked. One that crashes, hangs or answers nonsense is killed, and
/// started anew when next asked. One thread at a time.
class WorkerPool {
public:
    static constexpr size_t workers = 2;

    /// `program` is the worker program's path.
    explicit WorkerPool(QString program);

    /// The answer to each request, of which there are at most as many as `workers`; nothing for one
    /// whose worker couldn't be started, failed, or didn't answer by `deadline`.
    [[nodiscard]] std::vector<std::optional<RecognizerAnswer>>
    ask(std::span<const RecognizerRequest> requests, QDeadlineTimer deadline);

private:
    QString m_program;
    std::array<std::unique_ptr<WorkerProcess>, workers> m_workers;
};

} // namespace velmor
