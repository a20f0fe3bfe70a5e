#pragma once

#include <QString>

namespace velmor {

enum class FileMove {
    done,
    taken, ///< There is something at the new path, which stays as it is.
    failed
};

/// Moves a file within its file system, to a path where nothing is yet: also what another program
/// puts there at the last moment isn't replaced. Two spellings of one name, where the file system
/// takes them for one, aren't in each other's way.
[[nodiscard]] FileMove moveFile(const QString &from, const QString &to);

} // namespace velmor
