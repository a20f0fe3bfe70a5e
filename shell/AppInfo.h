#pragma once

#include "engine/EngineSearch.h"

#include <QFont>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>

/// What the application says of itself.
namespace velmor::AppInfo {

/// Ours, and the name of our files on the desktop.
inline const QString applicationId = QStringLiteral("org.velmor.Velmor");

/// Which engine does the scanning, as far as its credits go.
enum class EngineKind {
    own,   ///< The one of this project, on SANE. Also where none is found.
    bundle ///< The bundle "scanengine.app".
};

/// One line of the About window.
struct Line {
    QString text;
    int size = 10; ///< Logical pixels.
    QFont::Weight weight = QFont::Normal;
    bool gray = false;

    bool operator==(const Line &) const = default;
};

[[nodiscard]] QString tagline();
/// The application object's version; "0.1.710" if it has none.
[[nodiscard]] QString version();

/// The kind of the engine at `path`.
[[nodiscard]] EngineKind engineKind(const std::optional<QString> &path);
/// Tagline, version, and whom the engine is owed to, top to bottom.
[[nodiscard]] QList<Line> aboutLines(EngineKind engine);

} // namespace velmor::AppInfo
