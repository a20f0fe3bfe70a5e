#pragma once

#include <QString>

#include <optional>

namespace velmor {

/// A new path for a backup, in a folder of the shared temporary directory that is this user's
/// alone. Nothing if there can be no such folder.
[[nodiscard]] std::optional<QString> newBackupPath();

} // namespace velmor
