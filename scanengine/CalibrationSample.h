#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/drivers/Driver.h"
#include "scanengine/drivers/DriverList.h"

#include <QString>

#include <stop_token>
#include <variant>

namespace scanengine {

using SampleResult = std::variant<QString, Cancelled, Fault>;

/// Captures one sheet and saves it as it is, as ".velmor_raw.png" in the folder of the command's
/// output path, in place of an older one. Blocks until the file is there and answers its absolute
/// path, or why there is none.
[[nodiscard]] SampleResult captureSample(const Command &command, const DriverList &drivers,
                                         const std::stop_token &stop);

} // namespace scanengine
