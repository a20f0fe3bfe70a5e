#include "scanengine/drivers/DriverList.h"

#include <utility>

namespace scanengine {

DriverList::DriverList(std::vector<std::unique_ptr<Driver>> drivers) : m_drivers(std::move(drivers))
{
}

QList<Device> DriverList::devices(const std::stop_token &stop) const
{
    QList<Device> all;
    for (const auto &driver : m_drivers)
        all += driver->devices(stop);
    return all;
}

QList<Device> DriverList::knownDevices() const
{
    QList<Device> all;
    for (const auto &driver : m_drivers)
        all += driver->knownDevices();
    return all;
}

OpenResult DriverList::open(const std::optional<QString> &id, const CaptureSettings &settings,
                            const TellStatus &tell, const std::stop_token &stop) const
{
    if (id && !id->isEmpty()) {
        for (const auto &driver : m_drivers) {
            if (driver->owns(*id))
                return driver->open(*id, settings, tell, stop);
        }
        return Fault{QStringLiteral("That scanner is no longer there. Look for scanners again.")};
    }
    for (const auto &driver : m_drivers) {
        QList<Device> devices = driver->knownDevices();
        if (devices.isEmpty())
            devices = driver->devices(stop);
        if (!devices.isEmpty())
            return driver->open(devices.front().id, settings, tell, stop);
    }
    return Fault{QStringLiteral("No scanner was found. Connect one and look for scanners again.")};
}

} // namespace scanengine
