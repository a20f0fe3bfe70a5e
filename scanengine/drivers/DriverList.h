#pragma once

#include "scanengine/drivers/Driver.h"

#include <memory>
#include <optional>
#include <vector>

namespace scanengine {

/// All drivers of the engine as if they were one. Every member may be called on several threads at
/// once.
class DriverList {
public:
    explicit DriverList(std::vector<std::unique_ptr<Driver>> drivers);

    /// The devices of every driver, in the order of the drivers. May take ten seconds; `stop` ends
    /// that early.
    [[nodiscard]] QList<Device> devices(const std::stop_token &stop) const;

    /// The devices that are known without looking, at once.
    [[nodiscard]] QList<Device> knownDevices() const;

    /// A session on the device with this id, on the first device when `id` is absent or empty, or
    /// why there is none.
    [[nodiscard]] OpenResult open(const std::optional<QString> &id, const CaptureSettings &settings,
                                  const TellStatus &tell, const std::stop_token &stop) const;

private:
    std::vector<std::unique_ptr<Driver>> m_drivers;
};

} // namespace scanengine
