#pragma once

#include <QString>

namespace velmor {

/// How this copy of the application came onto the computer.
struct Installation {
    enum class Kind {
        flatpak,
        appImage,      ///< `name` is the path of the file.
        debianPackage, ///< `name` is the package.
        files          ///< Files that nobody keeps track of; `name` is the program's path.
    };

    Kind kind = Kind::files;
    QString name = {};

    bool operator==(const Installation &) const = default;
};

/// What the user reads: how this copy was installed, and how it is updated.
[[nodiscard]] QString updateAdvice(const Installation &installation);

/// What the answer of "dpkg-query --search" says of the program at `path`; files where it names no
/// package.
[[nodiscard]] Installation installationFromSearch(const QString &answer, const QString &path);

} // namespace velmor
