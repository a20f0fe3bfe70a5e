#pragma once

#include "pipeline/OcrLine.h"

#include <QImage>
#include <QString>

#include <optional>
#include <vector>

namespace velmor {

/// The text of a page image, line by line in reading order.
///
/// Script, language and the way the page lies are found by itself, among the installed language
/// models; boxes are those of the image as given, also when its text is turned by quarter turns.
/// Pieces of a line that stand far apart, such as a table's columns, come as lines of their own.
/// Empty when the page has no text or none could be read.
///
/// Blocks for seconds: background threads only. Safe on several threads, which take turns; both
/// cores work on one page. The work is done by two worker processes that are started at first use,
/// keep their models between pages and end with this program. A worker that crashes, or hangs for
/// two minutes, is replaced and costs its page a second try, never more.
///
/// The worker program is `velmor-recognizer` beside this program, else in ../libexec/velmor from
/// there; the environment variable VELMOR_RECOGNIZER names another one.
[[nodiscard]] std::vector<OcrLine> recognizeText(const QImage &image);

/// Why no text can be recognised at all on this computer, as one sentence for the user; absent
/// when recognition works. Looked up once, which takes a moment; threads as `recognizeText`.
[[nodiscard]] std::optional<QString> recognitionProblem();

} // namespace velmor
