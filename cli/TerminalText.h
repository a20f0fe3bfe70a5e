#pragma once

#include <QByteArray>
#include <QString>

namespace velmor {

/// `text` in the terminal's encoding, on one line and harmless to it: characters that move its
/// cursor, change its colours or turn the writing direction become blanks.
[[nodiscard]] QByteArray terminalText(const QString &text);

/// Writes a line to standard output as it is. False if not all of it could be written.
bool printLine(const QByteArray &line);

/// The same to standard error, where there is nobody to tell of a failure.
void printErrorLine(const QByteArray &line);

} // namespace velmor
