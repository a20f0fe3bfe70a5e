#include "engine/LineFramer.h"

#include <utility>

namespace velmor {

LineFramer::LineFramer(qsizetype maximumBytes) : m_maximumBytes(maximumBytes) {}

void LineFramer::append(const QByteArray &chunk)
{
    m_bytes.append(chunk);
}

std::optional<QByteArray> LineFramer::next()
{
    while (true) {
        const qsizetype lineEnd = m_bytes.indexOf('\n', m_searched);
        if (lineEnd < 0) {
            keepPartialLine();
            return {};
        }
        const qsizetype start = std::exchange(m_lineStart, lineEnd + 1);
        m_searched = m_lineStart;
        const qsizetype length = lineEnd - start;
        const bool dropped = std::exchange(m_dropping, false);
        if (!dropped && length > 0 && length <= m_maximumBytes)
            return m_bytes.mid(start, length);
    }
}

/// Frees the lines already given out, and a partial line that grew above the limit.
void LineFramer::keepPartialLine()
{
    m_bytes.remove(0, std::exchange(m_lineStart, 0));
    m_dropping = m_dropping || m_bytes.size() > m_maximumBytes;
    if (m_dropping || m_bytes.isEmpty())
        m_bytes = QByteArray();
    m_searched = m_bytes.size();
}

} // namespace velmor
