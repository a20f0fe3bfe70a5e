#pragma once

#include "scanengine/imaging/ColorMode.h"
#include "scanengine/imaging/PageSurvey.h"

namespace scanengine {

/// The fewest colours that lose nothing of a page: `color`, `gray` or `blackWhite`. `survey` is of
/// the page as captured, `image` the page as finished but for its colours.
///
/// Colour is judged beside the paper: the light of the lamp, yellowed or pastel paper are none, nor
/// are the fringes that a scanner gives black letters; a small stamp, a word in blue ink or a
/// highlighted one are. A page is black and white only at 300 dpi or more, if all on it are dark,
/// crisp strokes on paper.
[[nodiscard]] ColorMode colorsOf(const QImage &image, const PageSurvey &survey);

} // namespace scanengine
