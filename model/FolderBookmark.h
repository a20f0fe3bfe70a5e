#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace velmor {

/// A reference to a folder that survives a restart, as opaque bytes. Nothing unless the folder is
/// there now.
[[nodiscard]] std::optional<QByteArray> folderBookmark(const QUrl &folder);

/// The folder that a bookmark refers to. Nothing if it is gone, or if the bytes are no bookmark.
[[nodiscard]] std::optional<QUrl> bookmarkedFolder(const QByteArray &bookmark);

} // namespace velmor
