#pragma once

#include "scanengine/drivers/Driver.h"

#include <QDeadlineTimer>
#include <QString>

#include <chrono>
#include <optional>
#include <stop_token>

namespace scanengine {

/// Tries again and again, with pauses and for a limited time, what a device refuses for the moment;
/// the user is told so once.
class PoliteRetry {
public:
    /// `message` is what the user is told; `limit` counts from the first refusal.
    PoliteRetry(TellStatus tell, QString message, std::chrono::milliseconds limit,
                std::chrono::milliseconds pause);

    /// After a refusal: pauses, until `stop` at most, and answers whether to try again. Once the
    /// time is up it doesn't pause and answers false.
    [[nodiscard]] bool pauseToRetry(const std::stop_token &stop);

private:
    TellStatus m_tell;
    QString m_message;
    std::chrono::milliseconds m_limit;
    std::chrono::milliseconds m_pause;
    std::optional<QDeadlineTimer> m_deadline; ///< Since the first refusal.
};

} // namespace scanengine
