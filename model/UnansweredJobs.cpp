#include "model/UnansweredJobs.h"

#include <algorithm>

namespace velmor {

namespace {

/// Whether an event of this word can be the end of a job.
bool ends(const QString &event, const QString &job)
{
    if (event == u"adjusted")
        return job == u"adjust";
    if (event == u"sample")
        return job == u"calibrate";
    // A scan, or a calibration that was cancelled.
    if (event == u"done")
        return job != u"adjust";
    return event == u"error";
}

} // namespace

void UnansweredJobs::noteSent(const EngineCommand &command)
{
    if (command.cmd == u"scan" || command.cmd == u"calibrate" || command.cmd == u"adjust")
        m_words.append(command.cmd);
}

void UnansweredJobs::noteEvent(const EngineEvent &event)
{
    const auto ended =
        std::ranges::find_if(m_words, [&](const QString &job) { return ends(event.event, job); });
    // What came before it and had no answer won't get one.
    if (ended != m_words.end())
        m_words.erase(m_words.begin(), ended + 1);
}

} // namespace velmor
