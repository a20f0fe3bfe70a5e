#pragma once

#include <QImage>

namespace scanengine {

/// `image`, 8-bit grey or RGB32, in black and white: one bit a pixel, with the same resolution.
///
/// The threshold lies halfway between ink and paper as they are around each place, so that shadows,
/// faint strokes and light print on dark come out alike. Pencil that touches something black has a
/// threshold of its own, which spares the soft edge of the black. Where there are no strokes it
/// lies halfway between black and paper: neither grain nor what shines through leaves a mark.
[[nodiscard]] QImage inBlackAndWhite(const QImage &image);

} // namespace scanengine
