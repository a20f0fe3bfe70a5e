#include "cli/Interrupts.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace velmor {

namespace {

constexpr int interruptedExit = 128 + SIGINT;
constexpr std::array handledSignals{SIGINT, SIGTERM};

// A signal handler has nothing but globals: the ends of a pipe to the event loop, and the count.
std::array<int, 2> wakeUpPipe{-1, -1};
volatile std::sig_atomic_t interruptCount = 0;

extern "C" void wakeEventLoop(int)
{
    interruptCount = interruptCount + 1;
    if (interruptCount > 1)
        _exit(interruptedExit);
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(wakeUpPipe[1], &byte, 1);
}

void setHandler(void (*handler)(int))
{
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : handledSignals)
        sigaction(number, &action, nullptr);
}

} // namespace

Interrupts::Interrupts(QObject *parent) : QObject(parent)
{
    interruptCount = 0;
    if (pipe2(wakeUpPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *notifier = new QSocketNotifier(wakeUpPipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (read(wakeUpPipe[0], &byte, 1) == 1)
            Q_EMIT interrupted();
    });
    setHandler(wakeEventLoop);
}

Interrupts::~Interrupts()
{
    setHandler(SIG_DFL);
    for (int &end : wakeUpPipe) {
        if (end >= 0)
            close(end);
        end = -1;
    }
}

} // namespace velmor
