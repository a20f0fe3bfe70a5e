#pragma once

#include <QUrl>

namespace velmor {

/// What tells that a file is another one than before, or gone.
struct FileStamp {
    qint64 changed = 0; ///< Nanoseconds since 1970.
    qint64 size = -1;   ///< Bytes; -1 for a file that isn't there.
    quint64 inode = 0;  ///< Another one where a file was put in its place.

    bool operator==(const FileStamp &) const = default;
};

/// Taken before a file is read, it shows later whether that is still what is there. Any thread.
[[nodiscard]] FileStamp stampOf(const QUrl &url);

} // namespace velmor
