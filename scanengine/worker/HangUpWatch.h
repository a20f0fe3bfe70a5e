#pragma once

#include "scanengine/worker/OpenDevice.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace scanengine {

/// Sees to it that the worker ends once the engine has hung up, whatever the device is doing.
///
/// The thread that uses the device is expected to notice by `hasHungUp`. If it doesn't, because it
/// is held up inside the device, the device is interrupted; if that doesn't help either the process
/// is killed.
class HangUpWatch {
public:
    /// Starts to watch. `socket` and `device` outlive the watch.
    HangUpWatch(int socket, OpenDevice &device);
    /// Ends the watch; but a process that the engine has hung up on is still killed in the end.
    ~HangUpWatch();
    HangUpWatch(const HangUpWatch &) = delete;
    HangUpWatch &operator=(const HangUpWatch &) = delete;

    [[nodiscard]] bool hasHungUp() const { return m_hasHungUp; }

    /// The thread that uses the device has noticed, and lets it go now.
    void noticed();

private:
    void run();

    int m_socket;
    OpenDevice &m_device;
    std::atomic<bool> m_hasHungUp = false;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isNoticed = false;
    std::thread m_thread;
};

} // namespace scanengine
