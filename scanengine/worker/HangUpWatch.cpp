#include "scanengine/worker/HangUpWatch.h"

#include <chrono>
#include <csignal>
#include <ctime>
#include <poll.h>

namespace scanengine {
namespace {

/// Between two pieces of data a backend takes less.
constexpr std::chrono::milliseconds timeToNotice{300};
/// For the device to come to rest. Shorter than what the engine grants.
constexpr time_t secondsToLeave = 8;

/// Has the kernel kill this process some time from now, which no state of the process can prevent.
void leaveBeforeLong()
{
    sigevent event{};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGKILL;
    timer_t timer{};
    if (timer_create(CLOCK_MONOTONIC, &event, &timer) != 0)
        return;
    itimerspec time{};
    time.it_value.tv_sec = secondsToLeave;
    timer_settime(timer, 0, &time, nullptr);
}

} // namespace

HangUpWatch::HangUpWatch(int socket, OpenDevice &device)
    : m_socket(socket), m_device(device), m_thread([this] { run(); })
{
}

HangUpWatch::~HangUpWatch()
{
    noticed();
    m_thread.join();
}

void HangUpWatch::noticed()
{
    const std::lock_guard lock(m_mutex);
    m_isNoticed = true;
    m_changed.notify_all();
}

void HangUpWatch::run()
{
    pollfd socket{m_socket, POLLRDHUP, 0};
    while (::poll(&socket, 1, -1) <= 0) {
    }
    leaveBeforeLong();
    m_hasHungUp = true;
    std::unique_lock lock(m_mutex);
    if (m_changed.wait_for(lock, timeToNotice, [this] { return m_isNoticed; }))
        return;
    lock.unlock();
    m_device.interrupt();
}

} // namespace scanengine
