#include "scanengine/TaskQueue.h"

#include <iterator>
#include <utility>

namespace scanengine {

TaskQueue::TaskQueue() : m_thread([this](const std::stop_token &end) { run(end); }) {}

bool TaskQueue::add(Task task, Cancelling cancelling)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_entries.size() >= longestQueue)
            return false;
        m_entries.push_back({std::move(task), cancelling, std::stop_source()});
    }
    m_changed.notify_all();
    return true;
}

void TaskQueue::cancel()
{
    const std::lock_guard lock(m_mutex);
    for (Entry &entry : m_entries) {
        if (entry.cancelling == Cancelling::allowed)
            entry.stop.request_stop();
    }
}

void TaskQueue::abandon()
{
    const std::lock_guard lock(m_mutex);
    if (m_entries.empty())
        return;
    m_entries.front().stop.request_stop();
    m_entries.erase(std::next(m_entries.begin()), m_entries.end());
}

bool TaskQueue::finish(std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, patience, [this] { return m_entries.empty(); });
}

void TaskQueue::run(const std::stop_token &end)
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, end, [this] { return !m_entries.empty(); });
        if (end.stop_requested())
            return;
        // A deque's first element stays where it is while those behind it come and go.
        const Entry &entry = m_entries.front();
        lock.unlock();
        entry.task(entry.stop.get_token());
        lock.lock();
        m_entries.pop_front();
        m_changed.notify_all();
    }
}

} // namespace scanengine
