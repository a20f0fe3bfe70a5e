#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace scanengine {

/// Runs tasks one after the other, in the order they were added, on a thread of its own.
///
/// Every member may be called on any thread but the queue's own. Tasks must not throw.
class TaskQueue {
public:
    /// Gets the token that says when to give up. A task that was cancelled while it waited for its
    /// turn is still run, so that it can give its answer.
    using Task = std::function<void(const std::stop_token &)>;

    /// Whether `cancel` reaches the task.
    enum class Cancelling { allowed, ignored };

    /// The most tasks that may be there, the running one included.
    static constexpr size_t longestQueue = 256;

    TaskQueue();
    /// Waits for the running task; see `finish`.
    ~TaskQueue() = default;
    TaskQueue(const TaskQueue &) = delete;
    TaskQueue &operator=(const TaskQueue &) = delete;

    /// False, and nothing is queued, when `longestQueue` tasks are there.
    [[nodiscard]] bool add(Task task, Cancelling cancelling);

    /// Tells the running task and every waiting one to give up.
    void cancel();

    /// Throws the waiting tasks away without running them, and tells the running one to give up.
    void abandon();

    /// Waits until every task has run, at most `patience`; false if that was too short.
    [[nodiscard]] bool finish(std::chrono::milliseconds patience);

private:
    struct Entry {
        Task task;
        Cancelling cancelling;
        std::stop_source stop;
    };

    void run(const std::stop_token &end);

    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    /// The first is the running one.
    std::deque<Entry> m_entries;
    /// Last, so that it ends before what it works on.
    std::jthread m_thread;
};

} // namespace scanengine
