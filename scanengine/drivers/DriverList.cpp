#include "scanengine/drivers/DriverList.h"

#include <utility>

namespace scanengine {

DriverList::DriverList(std::vector<std::unique_ptr<Driver>> drivers) : m_drivers(std::move(drivers))
{
}

QList<Device> DriverList::devices() const
{
    QList<Device> all;
    for (const auto &driver : m_drivers)
        all += driver->devices();
    return all;
}

Result<std::unique_ptr<ScanSession>> DriverList::open(const std::optional<QString> &id,
                                                      const CaptureSettings &settings) const
{
    const bool anyDevice = !id || id->isEmpty();
    for (const auto &driver : m_drivers) {
        for (const Device &device : driver->devices()) {
            if (anyDevice || device.id == *id)
                return driver->open(device.id, settings);
        }
    }
    if (anyDevice)
        return Fault{
            QStringLiteral("No scanner was found. Connect one and look for scanners again.")};
    return Fault{QStringLiteral("That scanner is no longer there. Look for scanners again.")};
}

} // namespace scanengine
