#pragma once

#include "scanengine/imaging/PageSurvey.h"

namespace scanengine {

/// Whether the sheet that was surveyed, as captured and straightened, holds nothing.
///
/// Nothing are specks up to 1 mm, punch holes, a staple, folds, the rim of the page, shadows and
/// what shines through from the other side. One short line, in faint pencil too, or a page number
/// is content. In doubt, so on an image that shows no paper or is too small, the answer is no.
[[nodiscard]] bool isBlank(const PageSurvey &survey);

} // namespace scanengine
