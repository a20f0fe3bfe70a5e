#pragma once

#include "editor/CropBoxes.h"
#include "editor/MagicLevels.h"

#include <QString>

/// What the editor says, in the user's language.
namespace velmor::EditorWords {

/// What to do next, for the tool bar.
[[nodiscard]] QString instruction(const CropBoxes &boxes);
[[nodiscard]] QString instruction(const MagicLevels &levels);

/// A zoom in percent, truncated.
[[nodiscard]] QString zoomReadout(double zoom);
/// "3/5" for the page at index 2 of 5.
[[nodiscard]] QString pageReadout(int pageIndex, int pageCount);
/// Both points in percent, truncated.
[[nodiscard]] QString levelsReadout(const MagicLevels &levels);
[[nodiscard]] QString gammaReadout(const MagicLevels &levels);

/// For screen readers: which corner this is, and where on the page it lies.
[[nodiscard]] QString cornerName(BoxCorner corner);
[[nodiscard]] QString cornerPlace(QPointF place);
/// A level in percent, rounded.
[[nodiscard]] QString levelValue(double level);

} // namespace velmor::EditorWords
