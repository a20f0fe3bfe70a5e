#pragma once

#include "pipeline/Quad.h"

#include <QString>

#include <optional>

namespace velmor {

/// The region that `text` names, as on the command line: four corners "x,y", in any order, with
/// blanks between them, each a fraction of the page as shown, from its top left. Nothing for text
/// of another form, and for corners that don't make a usable region.
[[nodiscard]] std::optional<Quad> quadFromText(const QString &text);

} // namespace velmor
