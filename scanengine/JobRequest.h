#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/drivers/Driver.h"

namespace scanengine {

/// What a command's words mean for the work on it, or what is wrong with them.

/// The colour mode; `automatic` where the command names none.
[[nodiscard]] Result<ColorMode> colorModeOf(const Command &command);

/// Where to take paper from; `automatic` where the command names no source.
[[nodiscard]] Result<PaperSource> paperSourceOf(const Command &command);

/// How to capture sheets for a scan or a calibration: 300 dpi where the command states none. The
/// output folder is there and can be written to.
[[nodiscard]] Result<CaptureSettings> captureSettingsOf(const Command &command);

} // namespace scanengine
