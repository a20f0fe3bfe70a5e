#include "scanengine/drivers/sane/WorkerProcess.h"

#include "scanengine/drivers/sane/WorkerMessages.h"

#include <QFile>
#include <QScopeGuard>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace scanengine {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool canLimitMemory = false;
#else
constexpr bool canLimitMemory = true;
#endif

/// What a process inherits and how it starts.
class SpawnSettings {
public:
    explicit SpawnSettings(int standardInput)
    {
        posix_spawn_file_actions_init(&m_files);
        posix_spawnattr_init(&m_attributes);
        m_isUsable =
            posix_spawn_file_actions_adddup2(&m_files, standardInput, STDIN_FILENO) == 0 &&
            posix_spawn_file_actions_adddup2(&m_files, STDERR_FILENO, STDOUT_FILENO) == 0 &&
            posix_spawnattr_setpgroup(&m_attributes, 0) == 0 && setFreshSignals();
    }
    ~SpawnSettings()
    {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_files);
    }
    SpawnSettings(const SpawnSettings &) = delete;
    SpawnSettings &operator=(const SpawnSettings &) = delete;

    [[nodiscard]] std::optional<pid_t> spawn(const WorkerLaunch &launch) const
    {
        if (!m_isUsable)
            return std::nullopt;
        QByteArray program = QFile::encodeName(launch.program);
        const std::array<char *, 2> arguments{program.data(), nullptr};
        std::vector<QByteArray> variables;
        for (const QString &variable : launch.environment.toStringList())
            variables.push_back(QFile::encodeName(variable));
        std::vector<char *> environment;
        for (QByteArray &variable : variables)
            environment.push_back(variable.data());
        environment.push_back(nullptr);
        pid_t process = 0;
        if (posix_spawn(&process, program.constData(), &m_files, &m_attributes, arguments.data(),
                        environment.data()) != 0)
            return std::nullopt;
        return process;
    }

private:
    bool setFreshSignals()
    {
        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        return posix_spawnattr_setsigdefault(&m_attributes, &all) == 0 &&
               posix_spawnattr_setsigmask(&m_attributes, &none) == 0 &&
               posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP |
                                                           POSIX_SPAWN_SETSIGDEF |
                                                           POSIX_SPAWN_SETSIGMASK) == 0;
    }

    posix_spawn_file_actions_t m_files{};
    posix_spawnattr_t m_attributes{};
    bool m_isUsable = false;
};

void limitMemory(pid_t process, qint64 bytes)
{
    if (!canLimitMemory || bytes <= 0)
        return;
    const auto most = static_cast<rlim_t>(bytes);
    const rlimit limit{most, most};
    prlimit(process, RLIMIT_DATA, &limit, nullptr);
}

/// Kills the process and what it has started, such as the process that reads for some backends.
void killGroup(pid_t process)
{
    ::kill(-process, SIGKILL);
    ::kill(process, SIGKILL);
}

void reap(pid_t process)
{
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace

std::unique_ptr<WorkerProcess> WorkerProcess::start(const WorkerLaunch &launch)
{
    std::array<int, 2> ends{};
    // Closed on exec: an end kept open by another worker would hide that this program is gone.
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return nullptr;
    const auto closeWorkersEnd = qScopeGuard([&] { ::close(ends[1]); });
    auto closeOwnEnd = qScopeGuard([&] { ::close(ends[0]); });
    const auto process = SpawnSettings(ends[1]).spawn(launch);
    if (!process)
        return nullptr;
    limitMemory(*process, launch.memoryLimit);
    const int processDescriptor = int(::syscall(SYS_pidfd_open, *process, 0));
    if (processDescriptor < 0) {
        killGroup(*process);
        reap(*process);
        return nullptr;
    }
    closeOwnEnd.dismiss();
    return std::unique_ptr<WorkerProcess>(new WorkerProcess(*process, processDescriptor, ends[0]));
}

WorkerProcess::WorkerProcess(pid_t process, int processDescriptor, int socket)
    : m_process(process), m_processDescriptor(processDescriptor), m_socket(socket, maxAnswerFrame)
{
}

WorkerProcess::~WorkerProcess()
{
    killGroup(m_process);
    reap(m_process);
    ::close(m_processDescriptor);
}

bool WorkerProcess::end(std::chrono::milliseconds patience)
{
    m_socket.shutDown();
    const QDeadlineTimer deadline(patience);
    for (;;) {
        pollfd process{m_processDescriptor, POLLIN, 0};
        const int ready = ::poll(&process, 1, pollTime(deadline));
        if (ready > 0)
            return true;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

} // namespace scanengine
