#pragma once

#include "bench/corpus/Canvas.h"

namespace corpus {

/// The part of the sheet inside its margins, from `top` to `bottom` of its height.
[[nodiscard]] QRectF block(const Canvas &canvas, double top = 0.12, double bottom = 0.9);

/// A line of `words` words of handwriting that begins at `start`, its small letters `letterMm`
/// tall.
[[nodiscard]] Canvas::Strokes handwriting(Canvas &canvas, QPointF start, double letterMm,
                                          int words);

/// A block of text from `top` to `bottom` between the margins, all in one size; in `family`, or in
/// one of several chosen by chance if that is empty. Sizes in points.
[[nodiscard]] Canvas::Strokes paragraphs(Canvas &canvas, QRectF block, double points,
                                         const QString &family = {});

/// `text` in a font of `points`, its line beginning at `start`.
[[nodiscard]] Canvas::Strokes line(const QString &text, QPointF start, double points,
                                   const QString &family = QStringLiteral("Liberation Sans"));

/// So many words without meaning.
[[nodiscard]] QString words(QRandomGenerator &random, int count);

} // namespace corpus
