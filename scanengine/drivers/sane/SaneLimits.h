#pragma once

#include <QtGlobal>

#include <chrono>

namespace scanengine {

/// How long each step with a device may take before the worker that takes it is given up, and what
/// else bounds the work with SANE.
struct SaneLimits {
    /// One backend's search. Backends that ask the network take up to five seconds by design.
    std::chrono::milliseconds backendSearch{6'000};
    /// The search of all backends; what has not answered then is told from before.
    std::chrono::milliseconds wholeSearch{9'000};
    /// For the worker of a search to end.
    std::chrono::milliseconds searchEnd{500};
    /// Some devices are sent their firmware when they are opened.
    std::chrono::milliseconds open{45'000};
    std::chrono::milliseconds option{15'000};
    /// Lamps warm up for a minute or more.
    std::chrono::milliseconds start{150'000};
    /// Between two pieces of a page. Slow devices calibrate or move the carriage back meanwhile.
    std::chrono::milliseconds data{60'000};
    /// For a device that says it is busy, with another program or a print, to become free.
    std::chrono::milliseconds busy{10'000};
    /// Between two tries of a device that is busy or warms up.
    std::chrono::milliseconds busyRetry{1'000};
    /// What a device may take to become free without the user being told.
    std::chrono::milliseconds untold{1'000};
    /// For the worker to let its device go, the carriage going home included.
    std::chrono::milliseconds release{10'000};
    /// Between two looks whether the feeder has got paper.
    std::chrono::milliseconds paperRetry{2'000};
    /// Between two looks at a sensor or a button, which disturb a device less.
    std::chrono::milliseconds sensorRetry{400};
    /// Data of one worker in bytes: a colour page at 1200 dpi takes 420 MB, and some backends hold
    /// two.
    qint64 workerMemory = qint64{3} << 30;
};

} // namespace scanengine
