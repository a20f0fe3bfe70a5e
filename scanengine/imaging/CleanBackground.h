#pragma once

#include "scanengine/imaging/PageSurvey.h"

#include <QImage>

namespace scanengine {

/// `image`, 8-bit grey or RGB32, of which `survey` was made, with its paper even white.
///
/// Shadows, the lamp's falloff and colour, the tint of the paper, folds and print that shines
/// through from the other side go. Ink, pencil, stamps and highlighter stay as dark and as coloured
/// as they are beside their paper, and photographs get the light that the paper around them gets.
/// Pastel paper becomes white, too; a page of strongly coloured card, a photograph without a border
/// and any page that shows no paper stay as they are.
[[nodiscard]] QImage withCleanBackground(QImage image, const PageSurvey &survey);

} // namespace scanengine
