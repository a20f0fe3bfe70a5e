#include "scanengine/OutputWriter.h"

#include <QJsonDocument>

#include <cerrno>
#include <unistd.h>

namespace scanengine {

void OutputWriter::write(const QJsonObject &event)
{
    const QByteArray line = QJsonDocument(event).toJson(QJsonDocument::Compact) + '\n';

    const std::lock_guard lock(m_mutex);
    const char *next = line.constData();
    auto left = static_cast<size_t>(line.size());
    while (left > 0 && !m_readerGone) {
        const ssize_t written = ::write(m_descriptor, next, left);
        if (written < 0) {
            m_readerGone = errno != EINTR;
            continue;
        }
        next += written;
        left -= static_cast<size_t>(written);
    }
}

} // namespace scanengine
