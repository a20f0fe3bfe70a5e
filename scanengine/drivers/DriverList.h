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

    /// The devices of every driver, in the order of the drivers. May take long.
    [[nodiscard]] QList<Device> devices() const;

    /// A session on the device with this id, on the first device when `id` is absent or empty, or
    /// why there is none.
    [[nodiscard]] Result<std::unique_ptr<ScanSession>> open(const std::optional<QString> &id,
                                                            const CaptureSettings &settings) const;

private:
    std::vector<std::unique_ptr<Driver>> m_drivers;
};

} // namespace scanengine
