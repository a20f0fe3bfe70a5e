#pragma once

#include "scanengine/Result.h"

#include <QString>
#include <QStringList>

namespace scanengine {

/// What the engine program is called with.
struct Arguments {
    bool wantsHelp = false;
    bool wantsVersion = false;
    QString logFile; ///< Empty for none.

    bool operator==(const Arguments &) const = default;
};

/// The meaning of `words`, the program's own name not among them; `logFile` is what holds unless
/// they name another.
[[nodiscard]] Result<Arguments> parseArguments(const QStringList &words, const QString &logFile);

/// How to use the program, for a terminal of 80 columns.
[[nodiscard]] QString usageText();

} // namespace scanengine
