#include "scanengine/drivers/sane/FrameSocket.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace scanengine {
namespace {

constexpr qsizetype lengthBytes = sizeof(quint32);

bool mayTryAgain()
{
    return errno == EAGAIN || errno == EINTR;
}

} // namespace

int pollTime(const QDeadlineTimer &deadline)
{
    return static_cast<int>(
        std::min<qint64>(deadline.remainingTime(), std::numeric_limits<int>::max()));
}

FrameSocket::FrameSocket(int descriptor, qsizetype longestFrame)
    : m_descriptor(descriptor), m_longestFrame(longestFrame)
{
}

FrameSocket::~FrameSocket()
{
    ::close(m_descriptor);
}

bool FrameSocket::send(const QByteArray &frame, QDeadlineTimer deadline)
{
    QByteArray bytes(lengthBytes, Qt::Uninitialized);
    qToLittleEndian(static_cast<quint32>(frame.size()), bytes.data());
    bytes += frame;
    QByteArrayView left = bytes;
    while (!left.isEmpty()) {
        const ssize_t sent = ::send(m_descriptor, left.data(), static_cast<size_t>(left.size()),
                                    MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent >= 0)
            left = left.sliced(sent);
        else if (!mayTryAgain() || !waitToSend(deadline))
            return false;
    }
    return true;
}

bool FrameSocket::waitToSend(QDeadlineTimer deadline) const
{
    for (;;) {
        pollfd socket{m_descriptor, POLLOUT, 0};
        const int ready = ::poll(&socket, 1, pollTime(deadline));
        if (ready > 0)
            return true;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

FrameSocket::Received FrameSocket::receive(QDeadlineTimer deadline, int wakeDescriptor)
{
    std::array<char, 64 * 1024> chunk;
    for (;;) {
        if (m_received.size() >= lengthBytes) {
            const qsizetype size = qFromLittleEndian<quint32>(m_received.constData());
            if (size > m_longestFrame)
                return Gone{};
            if (m_received.size() >= lengthBytes + size) {
                QByteArray frame = m_received.mid(lengthBytes, size);
                m_received.remove(0, lengthBytes + size);
                return frame;
            }
        }
        std::array<pollfd, 2> waiting{
            {{m_descriptor, POLLIN, 0}, {wakeDescriptor, POLLIN, 0}}
        };
        const int ready = ::poll(waiting.data(), waiting.size(), pollTime(deadline));
        if (ready == 0)
            return TooLate{};
        if (ready < 0 && errno != EINTR)
            return Gone{};
        if (ready < 0)
            continue;
        if (waiting[1].revents != 0)
            return Woken{};
        const ssize_t count = ::recv(m_descriptor, chunk.data(), chunk.size(), MSG_DONTWAIT);
        if (count > 0)
            m_received.append(chunk.data(), count);
        else if (count == 0 || !mayTryAgain())
            return Gone{};
    }
}

void FrameSocket::shutDown()
{
    ::shutdown(m_descriptor, SHUT_RDWR);
}

} // namespace scanengine
