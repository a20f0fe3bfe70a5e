#pragma once

#include "scanengine/drivers/sane/SaneOptions.h"

#include <QByteArray>
#include <QString>

namespace scanengine {

/// The options that `scanimage -A` printed for a device, so that a report of a user can be a test.
///
/// Lines that are no options are skipped. A length in millimetres is fixed-point, every other
/// number an integer. A line that can't be read fails the test.
[[nodiscard]] SaneOptions parseOptionDump(const QByteArray &dump);

/// `setting` as "name=value".
[[nodiscard]] QString inShort(const SaneSetting &setting);

/// A value as `scanimage` prints it: "yes", "215.9", "Color".
[[nodiscard]] QString inShort(const SaneValue &value);

} // namespace scanengine
