#pragma once

#include "pipeline/Quad.h"

#include <QImage>

#include <optional>

namespace velmor {

/// The region `quad` of `source` as an upright rectangle.
///
/// Each side gets the length of the longer of the two that it comes from, in the source's pixels,
/// and at least one. Cubic interpolation between pixel centres; a region whose sides are upright
/// and run along pixel borders keeps its pixels as they are. The result has 8 bits a channel and is
/// opaque, transparent parts laid on white; a grey source gives a grey result.
///
/// Pure; any thread. Nothing for a null image, for a region that isn't usable, for a result of more
/// than `RawStore::maxPixels`, and for want of memory.
[[nodiscard]] std::optional<QImage> correctPerspective(const QImage &source, const Quad &quad);

} // namespace velmor
