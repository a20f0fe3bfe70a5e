#pragma once

#include "scanengine/drivers/sane/DeviceNames.h"
#include "scanengine/drivers/sane/SaneOptions.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>

namespace scanengine {

/// What searches have found, backend by backend, and which backends are in use just now: no search
/// disturbs a device at work, and none is opened in the middle of its backend's search.
///
/// Every member may be called on any thread.
class KnownDevices {
public:
    /// The devices of `backend` in place of those known before.
    void replace(const QString &backend, const QList<SaneDevice> &devices);

    /// Forgets the devices of all backends but these, whose configuration is gone.
    void keepOnly(const QStringList &backends);

    /// The scanners among all devices known.
    [[nodiscard]] QList<SaneScanner> scanners() const;

    /// Takes a backend into use; false if it is in use already.
    [[nodiscard]] bool tryOccupy(const QString &backend);

    /// Takes a backend into use as soon as it is free; false if that takes longer than `patience`,
    /// or once `stop` is requested.
    [[nodiscard]] bool occupy(const QString &backend, std::chrono::milliseconds patience,
                              const std::stop_token &stop);

    void vacate(const QString &backend);

private:
    mutable std::mutex m_mutex;
    std::condition_variable_any m_vacated;
    QStringList m_order; ///< The backends in the order they became known.
    QHash<QString, QList<SaneDevice>> m_devices;
    QSet<QString> m_inUse;
};

} // namespace scanengine
