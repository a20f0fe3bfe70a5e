#pragma once

#include <QElapsedTimer>
#include <QStringList>

/// What the programs that work on a folder of pages have in common.
namespace bench {

/// The paths of the folder's PNG files, by name.
[[nodiscard]] QStringList pageFiles(const QString &folder);

/// Says on the error output what failed. Answers the program's exit code.
[[nodiscard]] int fail(const char *what);

/// Prints the seconds since `clock` started. Answers the program's exit code: a failure when there
/// were no pages, as the figure would mean nothing.
[[nodiscard]] int report(const QElapsedTimer &clock, const QStringList &pages);

} // namespace bench
