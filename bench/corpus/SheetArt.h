#pragma once

#include "bench/corpus/Random.h"

#include <QImage>
#include <QSizeF>

namespace corpus {

/// What is on a sheet of paper.
enum class SheetContent {
    text,         ///< Paragraphs in one or two columns, with headings.
    fewLines,     ///< A heading and three to six lines.
    table,        ///< Rules in a grid, a few words in each cell.
    verticalText, ///< Columns of square characters from top to bottom.
    receipt,      ///< Narrow lines, some of them bold, with a bar code.
    photo,        ///< A landscape up to the paper's edges.
    darkPhoto,    ///< A night scene up to the paper's edges.
    drawing,      ///< Strokes in all directions.
    slopes,       ///< A chart whose lines run at angles and never level.
    blank
};

/// A sheet as it was printed, before it lies on a bed.
struct Sheet {
    QImage picture; ///< RGB32 at the resolution asked for.
    /// The pixels that must never be cut: 255 on ink and pictures, 0 on bare paper. Grey,
    /// as large as the picture.
    QImage content;
    bool hasLines = false; ///< Whether text lines or rules tell where up is.
};

/// A sheet of `millimeters` in `paper`'s colour. Text is drawn with letters made of strokes, so
/// that no fonts are needed and every machine gets the same sheet.
[[nodiscard]] Sheet makeSheet(SheetContent content, QSizeF millimeters, int dpi, QRgb paper,
                              Random &random);

} // namespace corpus
