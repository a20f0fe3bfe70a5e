#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace velmor {

/// Where the engine is looked for. Paths; an empty one is passed over.
struct EnginePlaces {
    QString chosenProgram = {};       ///< The value of the environment variable VELMOR_ENGINE.
    QStringList resourceFolders = {}; ///< What belongs to this installation, first choice first.
    QString home = {};                ///< The user's home folder.
};

/// The places of the running program, which are those of an installed one (libexec/velmor and
/// lib/velmor beside its folder) and then its own folder, as in a build tree. Needs the application
/// object; reads the environment anew each time.
[[nodiscard]] EnginePlaces enginePlaces();

/// The absolute path of the engine, or nothing.
///
/// In this order: the chosen program; scanengine.app/Contents/MacOS/scanengine in the resource
/// folders; scanengine in the resource folders; the developer's folder _Coding/VELMOR/engine under
/// the home folder; the folders directly inside that one. Only an executable file counts, symbolic
/// links followed. The one exception is scanengine in a resource folder, which is taken whatever
/// it is, so that a broken installation is reported by the launch instead of being passed over.
[[nodiscard]] std::optional<QString> findEngine(const EnginePlaces &places);

} // namespace velmor
