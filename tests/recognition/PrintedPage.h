#pragma once

#include <QImage>
#include <QStringList>

namespace velmor {

/// Where the first line of a printed page stands, in points from the lower left corner of A4.
inline constexpr int firstBaseline = 760;
inline constexpr int printedMargin = 70;
/// Points from one line to the next; the letters are of 12 points.
inline constexpr int printedLeading = 18;

/// A sheet of A4 at 300 dpi with `lines` printed in Helvetica; Latin-1 characters only.
[[nodiscard]] QImage printedPage(const QStringList &lines);

} // namespace velmor
