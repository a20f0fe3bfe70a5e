#pragma once

#include "pipeline/PageText.h"

namespace velmor {

/// The places of `text` that read like `query`, in order, none within another.
///
/// Upper and lower case are alike, any white space in a row counts as one space, and what a line
/// break leaves in a word, hyphen included, doesn't count. Nothing for a query without a visible
/// character.
[[nodiscard]] QList<TextRange> textMatches(const QString &text, const QString &query);

} // namespace velmor
