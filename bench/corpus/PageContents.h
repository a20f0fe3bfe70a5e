#pragma once

#include "bench/corpus/Canvas.h"

namespace corpus {

/// Draws on an empty sheet what `content` says.
void drawContent(Canvas &canvas, Content content);

} // namespace corpus
