#pragma once

#include <QDateTime>
#include <QFileInfo>

namespace velmor {

/// When the scan in a file was made: the date that was kept with it when it was replaced, else when
/// the file came into being, else, where the file system tells neither, now.
[[nodiscard]] QDateTime scanDate(const QFileInfo &file);

/// Keeps `date` with the open file `descriptor`, as an extended attribute. False where the file
/// system has none.
[[nodiscard]] bool keepScanDate(int descriptor, const QDateTime &date);

} // namespace velmor
