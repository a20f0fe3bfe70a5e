#pragma once

#include "scanengine/drivers/sane/FrameSocket.h"

#include <QProcessEnvironment>
#include <QString>

#include <chrono>
#include <memory>
#include <sys/types.h>

namespace scanengine {

/// How worker processes are started.
struct WorkerLaunch {
    QString program; ///< Absolute path.
    QProcessEnvironment environment;
    /// Most bytes of data a worker may allocate; 0 for no bound. What goes beyond it fails, which
    /// ends the worker at the latest when it doesn't expect that. Has no effect in builds with
    /// AddressSanitizer, which reserves terabytes.
    qint64 memoryLimit = 0;
};

/// One running worker process, and the socket to it.
///
/// The process is in a group of its own, so that an interrupt typed in a terminal doesn't reach it,
/// and has the standard error of this program for its own words. Destruction kills the group.
/// Usable from any thread, one at a time.
class WorkerProcess {
public:
    /// Null when the process can't be started.
    [[nodiscard]] static std::unique_ptr<WorkerProcess> start(const WorkerLaunch &launch);

    ~WorkerProcess();
    WorkerProcess(const WorkerProcess &) = delete;
    WorkerProcess &operator=(const WorkerProcess &) = delete;

    [[nodiscard]] FrameSocket &socket() { return m_socket; }

    /// Ends the worker's input, whereupon it lets its device go and ends. Waits for that, at most
    /// `patience`; false if that was too short.
    [[nodiscard]] bool end(std::chrono::milliseconds patience);

private:
    WorkerProcess(pid_t process, int processDescriptor, int socket);

    pid_t m_process;
    int m_processDescriptor; ///< Owned. Has something to read once the process has ended.
    FrameSocket m_socket;
};

} // namespace scanengine
