#pragma once

#include <QStringList>

namespace velmor {

/// Where the desktop keeps its lists of programs, first choice first: the user's and the system's
/// configuration folders, and the applications folders of the data folders.
[[nodiscard]] QStringList handlerFolders();

/// Whether a program for addresses of `scheme` is installed, by the lists in `folders` and the
/// desktop files in them.
[[nodiscard]] bool hasSchemeHandler(const QString &scheme, const QStringList &folders);

} // namespace velmor
