#pragma once

#include <optional>

/// The standard Helvetica font in the WinAnsi encoding, as every PDF viewer knows it.
///
/// Widths are those of the Adobe Core 14 font metrics, in thousandths of the font size.
namespace velmor::HelveticaMetrics {

/// The WinAnsi code of a Unicode character. Nothing for characters that the encoding lacks, for
/// control characters, and for the no-break space and soft hyphen, which viewers give back as
/// other characters than were put in.
[[nodiscard]] std::optional<unsigned char> winAnsiCode(char32_t character);

/// The advance width of a code that `winAnsiCode` gives.
[[nodiscard]] int advanceWidth(unsigned char code);

} // namespace velmor::HelveticaMetrics
