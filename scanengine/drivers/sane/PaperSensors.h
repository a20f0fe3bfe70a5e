#pragma once

#include "scanengine/drivers/sane/SaneOptions.h"

#include <optional>

namespace scanengine {

/// The option that senses paper in the feeder, or nullptr.
[[nodiscard]] const SaneOption *paperSensor(const SaneOptions &options);

/// Whether the feeder holds paper, as the device's sensor has it; nothing without a sensor. Needs
/// the value read just now.
[[nodiscard]] std::optional<bool> feederHoldsPaper(const SaneOptions &options);

/// The option that senses the device's button for scanning, or nullptr.
[[nodiscard]] const SaneOption *scanButton(const SaneOptions &options);

/// Whether that button is pressed, or was since it was last asked; false without one. Needs the
/// value read just now.
[[nodiscard]] bool isScanButtonPressed(const SaneOptions &options);

} // namespace scanengine
