#pragma once

#include <QByteArray>
#include <QDeadlineTimer>

#include <variant>

namespace scanengine {

/// One end of a connected stream socket that carries frames: four bytes of length, least
/// significant first, then that many bytes.
///
/// One thread at a time receives, one sends. A wait that is over before a whole frame came loses
/// nothing: the next one goes on with it.
class FrameSocket {
public:
    /// The time is over.
    struct TooLate {};
    /// Something else that was waited for has happened.
    struct Woken {};
    /// The peer is gone, or sends what is no frame. The socket is of no use any more.
    struct Gone {};
    using Received = std::variant<QByteArray, TooLate, Woken, Gone>;

    /// Takes over `descriptor`. Frames above `longestFrame` bytes are not received.
    FrameSocket(int descriptor, qsizetype longestFrame);
    /// Closes the socket.
    ~FrameSocket();
    FrameSocket(const FrameSocket &) = delete;
    FrameSocket &operator=(const FrameSocket &) = delete;

    /// False when the peer is gone, or didn't take the whole frame in time; no signal is raised.
    /// The socket is of no use for sending after that.
    [[nodiscard]] bool send(const QByteArray &frame, QDeadlineTimer deadline);

    /// The next frame. `wakeDescriptor` breaks the wait off once it has something to read; -1 for
    /// none.
    [[nodiscard]] Received receive(QDeadlineTimer deadline, int wakeDescriptor = -1);

    /// Tells the peer that nothing more will come, and takes nothing more from it.
    void shutDown();

private:
    [[nodiscard]] bool waitToSend(QDeadlineTimer deadline) const;

    int m_descriptor;
    qsizetype m_longestFrame;
    QByteArray m_received;
};

/// What is left until `deadline` as poll() takes it: milliseconds, -1 for ever.
[[nodiscard]] int pollTime(const QDeadlineTimer &deadline);

} // namespace scanengine
