#include "engine/ScanEngineClient.h"

#include <QProcess>

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velmor {
namespace {

constexpr int terminationGraceMs = 1000;
constexpr int killGraceMs = 500;

/// Waits until the child process `pid` has exited, and answers false if it has not in that time.
///
/// Unlike `QProcess::waitForFinished` it keeps the time also while the process floods its output:
/// Qt looks at the clock only when no pipe is ready.
bool exitsWithin(qint64 pid, int milliseconds)
{
    // By number, as the header of glibc 2.36 declares `pidfd_open` for C alone.
    const auto descriptor = static_cast<int>(syscall(SYS_pidfd_open, static_cast<pid_t>(pid), 0));
    if (descriptor < 0)
        return false;
    pollfd exit{.fd = descriptor, .events = POLLIN, .revents = 0};
    const int ready = poll(&exit, 1, milliseconds);
    close(descriptor);
    return ready > 0;
}

} // namespace

ScanEngineClient::ScanEngineClient(QObject *parent)
    : QObject(parent), m_process(std::make_unique<QProcess>())
{
    m_process->setStandardErrorFile(QProcess::nullDevice());
    // A group of its own, so that Ctrl-C in a terminal reaches this process alone, which then
    // tells the engine to cancel.
    m_process->setChildProcessModifier([] { setpgid(0, 0); });
    connect(m_process.get(), &QProcess::started, this, [this] {
        if (m_phase == Phase::launching)
            m_phase = Phase::running;
    });
    // Queued, because Qt still clears up after a failed launch when it emits this, and a receiver
    // may want to start again.
    connect(m_process.get(), &QProcess::errorOccurred, this, &ScanEngineClient::reportLaunchFailure,
            Qt::QueuedConnection);
    // Each call finds at most one pipe's content, so that a flood of output is held back by the
    // pipe, and timers and input have their turns between two calls.
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this,
            &ScanEngineClient::deliverEvents);
    connect(m_process.get(), &QProcess::finished, this, &ScanEngineClient::finish);
}

ScanEngineClient::~ScanEngineClient()
{
    stop();
    m_process->disconnect(this);
    if (m_process->state() == QProcess::NotRunning)
        return;
    if (!exitsWithin(m_process->processId(), terminationGraceMs))
        m_process->kill();
    if (!m_process->waitForFinished(killGraceMs)) {
        // Destroying it would wait for the process, for up to half a minute.
        static_cast<void>(m_process.release());
    }
}

std::optional<QString> ScanEngineClient::start(const EnginePlaces &places)
{
    if (m_phase != Phase::made)
        return {};
    const std::optional<QString> program = findEngine(places);
    if (!program)
        return tr("scanengine executable not found in bundle");
    m_process->start(*program, QStringList());
    if (m_process->state() == QProcess::NotRunning)
        return m_process->errorString();
    m_phase = Phase::launching;
    return {};
}

void ScanEngineClient::send(const EngineCommand &command)
{
    if (!isLaunched() || m_process->state() == QProcess::NotRunning)
        return;
    const QByteArray message = command.encoded();
    if (message.isEmpty() || m_process->bytesToWrite() + message.size() >= maximumPendingBytes)
        return;
    m_process->write(message + '\n');
}

void ScanEngineClient::stop()
{
    if (!isLaunched())
        return;
    send({.cmd = QStringLiteral("quit")});
    m_phase = Phase::stopped;
    // Output that still comes is read and thrown away, so that it does not gather.
    m_process->closeReadChannel(QProcess::StandardOutput);
    m_process->terminate();
}

bool ScanEngineClient::isLaunched() const
{
    return m_phase == Phase::launching || m_phase == Phase::running;
}

void ScanEngineClient::reportLaunchFailure()
{
    // Errors of a running process show in other ways: by its end, or not at all.
    if (m_phase != Phase::launching || m_process->error() != QProcess::FailedToStart)
        return;
    m_phase = Phase::made;
    Q_EMIT launchFailed(m_process->errorString());
}

void ScanEngineClient::deliverEvents()
{
    m_lines.append(m_process->readAllStandardOutput());
    while (isLaunched()) {
        const std::optional<QByteArray> line = m_lines.next();
        if (!line)
            return;
        if (const auto event = EngineEvent::decode(*line))
            Q_EMIT eventReceived(*event);
    }
}

void ScanEngineClient::finish()
{
    deliverEvents();
    if (!isLaunched())
        return;
    m_phase = Phase::ended;
    Q_EMIT ended();
}

} // namespace velmor
