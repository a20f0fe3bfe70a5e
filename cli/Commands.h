#pragma once

#include "cli/CommandLine.h"

/// What the commands do. Each answers the exit code of the process, and runs the event loop of the
/// application object, which must be there, as long as it takes.
namespace velmor {

[[nodiscard]] int carryOut(const ScanRequest &request);
[[nodiscard]] int carryOut(const DevicesRequest &request);
[[nodiscard]] int carryOut(const PresetsRequest &request);
[[nodiscard]] int carryOut(const MagicRequest &request);
[[nodiscard]] int carryOut(const CropRequest &request);
[[nodiscard]] int carryOut(const OcrRequest &request);
[[nodiscard]] int carryOut(const FilesRequest &request);
[[nodiscard]] int carryOut(const PrintRequest &request);
[[nodiscard]] int carryOut(const WrongUse &use);

} // namespace velmor
