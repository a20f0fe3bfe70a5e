#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>

#include <memory>
#include <optional>
#include <sys/types.h>

namespace velmor {

/// One running worker process, and the socket to it.
///
/// The process is in a group of its own, so that an interrupt typed in a terminal doesn't reach it;
/// destruction kills it. Usable from any thread, one at a time. A worker for which `send` or
/// `receive` failed is of no use any more.
class WorkerProcess {
public:
    /// Starts `program`, with the socket as its standard input. Null when that fails.
    [[nodiscard]] static std::unique_ptr<WorkerProcess> start(const QString &program);

    ~WorkerProcess();
    WorkerProcess(const WorkerProcess &) = delete;
    WorkerProcess &operator=(const WorkerProcess &) = delete;

    [[nodiscard]] bool send(const QByteArray &frame, QDeadlineTimer deadline);
    [[nodiscard]] std::optional<QByteArray> receive(qint64 longestFrame, QDeadlineTimer deadline);

    /// Ends the process, so that a `send` or `receive` that waits for it fails. Any thread.
    void kill() const;

private:
    WorkerProcess(pid_t process, int socket);

    pid_t m_process;
    int m_socket; ///< Owned.
};

} // namespace velmor
