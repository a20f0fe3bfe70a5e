#include "scanengine/drivers/sane/PoliteRetry.h"

#include "scanengine/drivers/Pause.h"

#include <utility>

namespace scanengine {

PoliteRetry::PoliteRetry(TellStatus tell, QString message, std::chrono::milliseconds limit,
                         std::chrono::milliseconds pause)
    : m_tell(std::move(tell)), m_message(std::move(message)), m_limit(limit), m_pause(pause)
{
}

bool PoliteRetry::pauseToRetry(const std::stop_token &stop)
{
    if (!m_deadline) {
        m_deadline.emplace(m_limit);
        m_tell(m_message);
    }
    if (m_deadline->hasExpired())
        return false;
    pauseFor(m_pause, stop);
    return true;
}

} // namespace scanengine
