#pragma once

#include "pipeline/recognition/InkMap.h"
#include "pipeline/recognizer/RecognizerMessages.h"

namespace velmor {

/// The lines of a page's text in the order in which they are read: columns of running text one
/// after the other, everything else row by row from the top, so that a table's rows stay rows.
///
/// `ink` is the page's, whose pixels the words' boxes count. The page may lie a few degrees askew.
/// A line that reaches across two columns becomes two. Text whose lines run up or down the page is
/// left in the order in which it comes.
[[nodiscard]] TextAnswer inReadingOrder(const TextAnswer &text, const InkMap &ink);

} // namespace velmor
