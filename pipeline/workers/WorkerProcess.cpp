#include "pipeline/workers/WorkerProcess.h"

#include "pipeline/workers/FrameChannel.h"

#include <QFile>
#include <QScopeGuard>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace velmor {

namespace {

/// Tesseract's own threads spin against each other and against the second worker: several times
/// slower on the same cores.
constexpr char oneThread[] = "OMP_THREAD_LIMIT=1";

std::vector<char *> workerEnvironment()
{
    std::vector<char *> entries;
    for (char **entry = environ; *entry; ++entry) {
        if (std::strncmp(*entry, "OMP_", 4) != 0)
            entries.push_back(*entry);
    }
    entries.push_back(const_cast<char *>(oneThread)); // posix_spawn() doesn't write to it
    entries.push_back(nullptr);
    return entries;
}

/// What a process inherits and how it starts.
class SpawnSettings {
public:
    explicit SpawnSettings(int standardInput)
    {
        posix_spawn_file_actions_init(&m_files);
        posix_spawnattr_init(&m_attributes);
        m_usable = posix_spawn_file_actions_adddup2(&m_files, standardInput, STDIN_FILENO) == 0 &&
                   silence(STDOUT_FILENO) && silence(STDERR_FILENO) && ownGroup() && freshSignals();
    }
    ~SpawnSettings()
    {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_files);
    }
    SpawnSettings(const SpawnSettings &) = delete;
    SpawnSettings &operator=(const SpawnSettings &) = delete;

    [[nodiscard]] std::optional<pid_t> spawn(const QByteArray &program) const
    {
        if (!m_usable)
            return std::nullopt;
        QByteArray name = program;
        const std::array<char *, 2> arguments{name.data(), nullptr};
        const std::vector<char *> environment = workerEnvironment();
        pid_t process = 0;
        if (posix_spawn(&process, program.constData(), &m_files, &m_attributes, arguments.data(),
                        environment.data()) != 0)
            return std::nullopt;
        return process;
    }

private:
    bool silence(int descriptor)
    {
        return posix_spawn_file_actions_addopen(&m_files, descriptor, "/dev/null", O_WRONLY, 0) ==
               0;
    }
    bool ownGroup() { return posix_spawnattr_setpgroup(&m_attributes, 0) == 0; }
    bool freshSignals()
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
    bool m_usable = false;
};

} // namespace

std::unique_ptr<WorkerProcess> WorkerProcess::start(const QString &program)
{
    std::array<int, 2> ends{};
    // Closed on exec: an end kept open by some other child would hide that this program is gone.
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return nullptr;
    const auto closeWorkersEnd = qScopeGuard([&] { close(ends[1]); });
    const auto process = SpawnSettings(ends[1]).spawn(QFile::encodeName(program));
    if (!process) {
        close(ends[0]);
        return nullptr;
    }
    return std::unique_ptr<WorkerProcess>(new WorkerProcess(*process, ends[0]));
}

WorkerProcess::WorkerProcess(pid_t process, int socket) : m_process(process), m_socket(socket) {}

WorkerProcess::~WorkerProcess()
{
    close(m_socket);
    kill();
    while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void WorkerProcess::kill() const
{
    ::kill(m_process, SIGKILL); // not reaped yet, so the number is still its own
}

bool WorkerProcess::send(const QByteArray &frame, QDeadlineTimer deadline)
{
    return FrameChannel::write(m_socket, frame, deadline);
}

std::optional<QByteArray> WorkerProcess::receive(qint64 longestFrame, QDeadlineTimer deadline)
{
    return FrameChannel::read(m_socket, longestFrame, deadline);
}

} // namespace velmor
