#pragma once

#include <QStringView>

namespace scanengine {

/// Whether `left` comes before `right` the way a person numbers files: "page2" before "page10".
///
/// Runs of the digits 0 to 9 compare by their value, of any length; other characters without
/// regard to case. Names that are equal in this sense ("a1", "A01") go by their code units, so
/// the order is total and the same in every locale.
[[nodiscard]] bool naturallyBefore(QStringView left, QStringView right);

} // namespace scanengine
