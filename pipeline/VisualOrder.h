#pragma once

#include <QList>
#include <QString>

namespace velmor {

/// Whether `text` holds a letter that is written from right to left.
[[nodiscard]] bool hasRightToLeftText(const QString &text);

/// The places of a line's characters on paper, after the Unicode bidirectional algorithm.
///
/// The answer has one entry for each character (code point) of `text`, in paper order from the
/// left: the index of that character in reading order. A line that can't be ordered is answered
/// in reading order.
[[nodiscard]] QList<qsizetype> visualOrder(const QString &text);

} // namespace velmor
