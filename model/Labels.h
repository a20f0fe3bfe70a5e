#pragma once

#include "model/Models.h"

#include <QString>

namespace velmor {

/// What the window calls a value: its `title` in the user's language. Titles themselves stay
/// English, as file names begin with them and tabs are told apart by them.
[[nodiscard]] QString label(DocumentType type);
[[nodiscard]] QString label(ColorMode mode);
[[nodiscard]] QString label(ScanQuality quality);

} // namespace velmor
