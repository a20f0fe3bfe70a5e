#pragma once

#include <QByteArray>
#include <QDeadlineTimer>

#include <optional>

/// Frames over a connected stream socket: four bytes of length, least significant first, then that
/// many bytes. Blocking, for any thread; one thread at a time reads, one writes. The descriptor
/// stays the caller's.
namespace velmor::FrameChannel {

/// True when the whole frame was handed over in time. A peer that is gone gives false, no signal.
[[nodiscard]] bool write(int socket, const QByteArray &frame, QDeadlineTimer deadline);

/// The next frame. Nothing when the peer is gone, is too slow or announces more than `limit` bytes;
/// the channel is of no use after that.
[[nodiscard]] std::optional<QByteArray> read(int socket, qint64 limit, QDeadlineTimer deadline);

} // namespace velmor::FrameChannel
