#include "scanengine/drivers/sane/KnownDevices.h"

namespace scanengine {

void KnownDevices::replace(const QString &backend, const QList<SaneDevice> &devices)
{
    const std::lock_guard lock(m_mutex);
    if (!m_devices.contains(backend))
        m_order.append(backend);
    m_devices.insert(backend, devices);
}

void KnownDevices::keepOnly(const QStringList &backends)
{
    const std::lock_guard lock(m_mutex);
    m_order.removeIf([&](const QString &known) { return !backends.contains(known); });
    m_devices.removeIf([&](const auto &entry) { return !backends.contains(entry.key()); });
}

QList<SaneScanner> KnownDevices::scanners() const
{
    QList<SaneDevice> all;
    {
        const std::lock_guard lock(m_mutex);
        for (const QString &backend : m_order)
            all += m_devices.value(backend);
    }
    return scannersAmong(all, readUsbDevices());
}

bool KnownDevices::tryOccupy(const QString &backend)
{
    const std::lock_guard lock(m_mutex);
    if (m_inUse.contains(backend))
        return false;
    m_inUse.insert(backend);
    return true;
}

bool KnownDevices::occupy(const QString &backend, std::chrono::milliseconds patience,
                          const std::stop_token &stop)
{
    std::unique_lock lock(m_mutex);
    if (!m_vacated.wait_for(lock, stop, patience, [&] { return !m_inUse.contains(backend); }))
        return false;
    m_inUse.insert(backend);
    return true;
}

void KnownDevices::vacate(const QString &backend)
{
    const std::lock_guard lock(m_mutex);
    m_inUse.remove(backend);
    m_vacated.notify_all();
}

} // namespace scanengine
