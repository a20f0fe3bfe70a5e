#include "scanengine/CommandReader.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace scanengine {

CommandReader::Item CommandReader::next()
{
    bool tooLong = false;
    qsizetype searched = 0;
    for (;;) {
        const qsizetype end = m_buffer.indexOf('\n', searched);
        if (end >= 0) {
            QByteArray line = m_buffer.left(end);
            m_buffer.remove(0, end + 1);
            if (tooLong || line.size() > longestLine)
                return TooLong{};
            return line;
        }
        if (m_buffer.size() > longestLine) {
            tooLong = true;
            m_buffer.clear();
        }
        searched = m_buffer.size();
        if (!fill())
            return End{};
    }
}

/// Appends what has arrived, waiting until something has; false at the end of the input.
bool CommandReader::fill()
{
    std::array<char, 64 * 1024> chunk;
    for (;;) {
        std::array<pollfd, 2> waiting{
            {{m_descriptor, POLLIN, 0}, {m_endDescriptor, POLLIN, 0}}
        };
        if (::poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR)
            return false;
        if (waiting[1].revents != 0)
            return false;
        if (waiting[0].revents == 0)
            continue;
        const ssize_t count = ::read(m_descriptor, chunk.data(), chunk.size());
        if (count > 0) {
            m_buffer.append(chunk.data(), count);
            return true;
        }
        if (count == 0 || errno != EINTR)
            return false;
    }
}

} // namespace scanengine
