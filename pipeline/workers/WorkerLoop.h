#pragma once

#include <QByteArray>

#include <functional>

namespace velmor {

/// Hands over one frame to the application; false when it is gone.
using FrameSink = std::function<bool(const QByteArray &frame)>;

/// The life of a worker process: gives each frame that comes on the socket that is its standard
/// input to `answer`, which hands over its own with `reply`, until the application is gone, which
/// ends the process even in the midst of work, or until `answer` is false. Frames may have
/// `longestFrame` bytes. Answers the exit code.
[[nodiscard]] int
runWorker(qint64 longestFrame,
          const std::function<bool(const QByteArray &frame, const FrameSink &reply)> &answer);

} // namespace velmor
