#include "pipeline/workers/FrameChannel.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <poll.h>
#include <sys/socket.h>

namespace velmor::FrameChannel {

namespace {

using LengthBytes = std::array<char, sizeof(quint32)>;

bool waitFor(int socket, short event, const QDeadlineTimer &deadline)
{
    for (;;) {
        pollfd entry{.fd = socket, .events = event, .revents = 0};
        const qint64 left = deadline.remainingTime(); // -1 for ever, as poll() has it
        const auto limit =
            static_cast<int>(std::min<qint64>(left, std::numeric_limits<int>::max()));
        const int ready = poll(&entry, 1, limit);
        if (ready > 0)
            return true;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

bool mayTryAgain()
{
    return errno == EAGAIN || errno == EINTR;
}

bool writeAll(int socket, const char *bytes, qsizetype size, const QDeadlineTimer &deadline)
{
    while (size > 0) {
        if (!waitFor(socket, POLLOUT, deadline))
            return false;
        const ssize_t sent =
            send(socket, bytes, static_cast<size_t>(size), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent < 0 && !mayTryAgain())
            return false;
        const ssize_t advance = std::max<ssize_t>(sent, 0);
        bytes += advance;
        size -= advance;
    }
    return true;
}

bool readAll(int socket, char *bytes, qsizetype size, const QDeadlineTimer &deadline)
{
    while (size > 0) {
        if (!waitFor(socket, POLLIN, deadline))
            return false;
        const ssize_t received = recv(socket, bytes, static_cast<size_t>(size), MSG_DONTWAIT);
        if (received == 0 || (received < 0 && !mayTryAgain()))
            return false;
        const ssize_t advance = std::max<ssize_t>(received, 0);
        bytes += advance;
        size -= advance;
    }
    return true;
}

} // namespace

bool write(int socket, const QByteArray &frame, QDeadlineTimer deadline)
{
    if (frame.size() > std::numeric_limits<quint32>::max())
        return false;
    LengthBytes length{};
    qToLittleEndian(static_cast<quint32>(frame.size()), length.data());
    return writeAll(socket, length.data(), std::ssize(length), deadline) &&
           writeAll(socket, frame.constData(), frame.size(), deadline);
}

std::optional<QByteArray> read(int socket, qint64 limit, QDeadlineTimer deadline)
{
    LengthBytes length{};
    if (!readAll(socket, length.data(), std::ssize(length), deadline))
        return std::nullopt;
    const qint64 size = qFromLittleEndian<quint32>(length.data());
    if (size > limit)
        return std::nullopt;
    QByteArray frame(size, Qt::Uninitialized);
    if (!readAll(socket, frame.data(), size, deadline))
        return std::nullopt;
    return frame;
}

} // namespace velmor::FrameChannel
