#pragma once

#include "cli/StatusDisplay.h"

#include <QCoroTask>

namespace velmor {

/// Whether text can be recognised; if not, the reason is printed at `display`, which the caller
/// keeps for as long. Without recognition, pages that are made anew would lose the text they have.
[[nodiscard]] QCoro::Task<bool> canRecognize(StatusDisplay &display);

} // namespace velmor
