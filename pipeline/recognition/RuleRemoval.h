#pragma once

#include <QImage>

namespace velmor {

/// Paints the long thin level lines of a page white: rules of tables and forms, underlines. A rule
/// that is half there breaks the layout analysis. Letters that stand on a rule or cross it stay.
///
/// `page` is Format_Grayscale8, dark on light paper, with `dpi`. Upright lines are no trouble.
void removeRules(QImage &page, int dpi);

} // namespace velmor
