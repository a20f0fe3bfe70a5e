#pragma once

#include "bench/corpus/Canvas.h"

namespace corpus {

/// The print of the sheet's other side, before anything else is drawn.
void drawBleedThrough(Canvas &canvas);

/// All of `flaws` but the bleeding, after everything else is drawn.
void drawFlaws(Canvas &canvas, Flaws flaws);

} // namespace corpus
