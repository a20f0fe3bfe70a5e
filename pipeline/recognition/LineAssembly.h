#pragma once

#include "pipeline/OcrLine.h"
#include "pipeline/recognizer/RecognizerMessages.h"

#include <QSize>

#include <vector>

namespace velmor {

/// The lines of a page as the application keeps them: what is no text but a picture read as such is
/// left out, and lines are cut where a gap is far wider than between words.
///
/// `page` is the size in pixels of the page that the words' boxes belong to, which is the image
/// turned clockwise by `degrees` (0, 90, 180 or 270); the lines' boxes are those of the image.
[[nodiscard]] std::vector<OcrLine> assembleLines(const TextAnswer &text, QSize page, int degrees);

/// The words of a line as text: parted by spaces, save between characters of scripts that have
/// none.
[[nodiscard]] QString lineText(const RecognizedWords &words);

/// All text of an answer, lines parted by line feeds, nothing left out.
[[nodiscard]] QString wholeText(const TextAnswer &text);

/// The mean confidence of all words by their length, 0 to 100; 0 without words.
[[nodiscard]] double meanConfidence(const TextAnswer &text);

} // namespace velmor
