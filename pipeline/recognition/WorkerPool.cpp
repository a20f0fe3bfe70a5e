#include "pipeline/recognition/WorkerPool.h"

namespace velmor {

WorkerPool::WorkerPool(QString program) : m_program(std::move(program)) {}

std::vector<std::optional<RecognizerAnswer>>
WorkerPool::ask(std::span<const RecognizerRequest> requests, QDeadlineTimer deadline)
{
    Q_ASSERT(requests.size() <= workers);
    for (auto &worker :
         m_workers) { // all at once: a second one is soon needed, and starts meanwhile
        if (!worker)
            worker = WorkerProcess::start(m_program);
    }
    for (size_t i = 0; i < requests.size(); ++i) {
        auto &worker = m_workers[i];
        if (worker && !worker->send(encode(requests[i]), deadline))
            worker.reset();
    }
    std::vector<std::optional<RecognizerAnswer>> answers(requests.size());
    for (size_t i = 0; i < requests.size(); ++i) {
        auto &worker = m_workers[i];
        if (!worker)
            continue;
        if (const auto frame = worker->receive(maxAnswerFrame, deadline))
            answers[i] = decodeAnswer(*frame);
        if (!answers[i])
            worker.reset();
    }
    return answers;
}

} // namespace velmor
