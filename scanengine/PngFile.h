#pragma once

#include "scanengine/Result.h"

#include <QImage>
#include <QString>

#include <optional>

namespace scanengine {

/// Writing PNG files that appear whole or not at all: each is written under a hidden name beside
/// its place and renamed then. They are compressed for speed. Any thread.

/// When a file's content goes from the system's memory to the disk: before it gets its name, or
/// whenever the system likes, which is quicker but can lose it in a power cut.
enum class Flushing { atOnce, bySystem };

/// Writes `image` to `path`, in place of whatever is there; the reason if that fails.
[[nodiscard]] std::optional<Fault> replacePng(const QImage &image, const QString &path,
                                              Flushing flushing);

/// Writes `image` to "<stem>.png" in `folder`, or to "<stem> (2).png" and so on if that name is
/// taken, and answers the path. A file that exists is never touched, not even one that appears
/// meanwhile.
[[nodiscard]] Result<QString> createPng(const QImage &image, const QString &folder,
                                        const QString &stem);

} // namespace scanengine
