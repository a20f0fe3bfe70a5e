#pragma once

#include <QByteArray>
#include <QString>

namespace velmor {

/// `text` in the terminal's encoding, on one line and harmless to it: control characters, which
/// could move its cursor or change its colours, become blanks.
[[nodiscard]] QByteArray terminalText(const QString &text);

/// Writes a line to standard output, or to standard error, as it is.
void printLine(const QByteArray &line);
void printErrorLine(const QByteArray &line);

} // namespace velmor
