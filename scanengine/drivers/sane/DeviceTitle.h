#pragma once

#include "scanengine/drivers/sane/SaneOptions.h"

#include <QString>
#include <QStringList>

namespace scanengine {

/// What a person calls `device`: its maker once, and its model, "Canon LiDE 400". The maker's usual
/// spelling; no underscores, no marks that only machines need. Never empty.
[[nodiscard]] QString deviceTitle(const SaneDevice &device);

/// Whether two titles name the same model: one has all the words of the other that count, and one
/// of those has a digit. "Canon TS3300 series" and "CANON PIXMA TS3300" do.
[[nodiscard]] bool isSameModel(const QString &title, const QString &other);

} // namespace scanengine
