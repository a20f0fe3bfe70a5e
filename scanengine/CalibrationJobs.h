#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/drivers/DriverList.h"

#include <QString>

#include <stop_token>

namespace scanengine {

/// The two steps of tuning brightness and contrast. Both block until their file is there and answer
/// its absolute path, or why there is none.

/// Captures one sheet and saves it as it is, as ".velmor_raw.png" in the folder of the command's
/// output path, in place of an older one.
[[nodiscard]] Result<QString> captureSample(const Command &command, const DriverList &drivers,
                                            const std::stop_token &stop);

/// Makes a finished page of the command's input and saves it at the command's output path, in place
/// of an older one. The page keeps the size of the input.
[[nodiscard]] Result<QString> adjustSample(const Command &command);

} // namespace scanengine
