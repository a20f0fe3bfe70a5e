#include "pipeline/HelveticaMetrics.h"

#include <array>
#include <cstdint>

namespace velmor::HelveticaMetrics {

namespace {

/// Unicode of the codes 0x80 to 0x9F; 0 where the encoding has none.
constexpr std::array<char32_t, 32> upperControls{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

constexpr unsigned char firstCode = 32;

/// Advance widths of the codes 32 to 255; 0 where the encoding has no character.
constexpr std::array<std::uint16_t, 224> widths{
    // 0x20
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278,
    // 0x30
    556, 556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556,
    // 0x40
    1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778,
    // 0x50
    667, 778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556,
    // 0x60
    333, 556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556,
    // 0x70
    556, 556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584, 0,
    // 0x80
    556, 0, 222, 556, 333, 1000, 556, 556, 333, 1000, 667, 333, 1000, 0, 611, 0,
    // 0x90
    0, 222, 222, 333, 333, 350, 556, 1000, 333, 1000, 500, 333, 944, 0, 500, 667,
    // 0xA0
    278, 333, 556, 556, 556, 556, 260, 556, 333, 737, 370, 556, 584, 333, 737, 333,
    // 0xB0
    400, 584, 333, 333, 333, 556, 537, 278, 333, 333, 365, 556, 834, 834, 834, 611,
    // 0xC0
    667, 667, 667, 667, 667, 667, 1000, 722, 667, 667, 667, 667, 278, 278, 278, 278,
    // 0xD0
    722, 722, 778, 778, 778, 778, 778, 584, 778, 722, 722, 722, 722, 667, 667, 611,
    // 0xE0
    556, 556, 556, 556, 556, 556, 889, 500, 556, 556, 556, 556, 278, 278, 278, 278,
    // 0xF0
    556, 556, 556, 556, 556, 556, 556, 584, 611, 556, 556, 556, 556, 500, 556, 500};

} // namespace

std::optional<unsigned char> winAnsiCode(char32_t character)
{
    constexpr char32_t noBreakSpace = 0xA0;
    constexpr char32_t softHyphen = 0xAD;
    if (character >= 0x20 && character < 0x7F)
        return static_cast<unsigned char>(character);
    if (character > noBreakSpace && character < 0x100 && character != softHyphen)
        return static_cast<unsigned char>(character);
    for (size_t i = 0; i < upperControls.size(); ++i) {
        if (upperControls[i] != 0 && upperControls[i] == character)
            return static_cast<unsigned char>(0x80 + i);
    }
    return std::nullopt;
}

int advanceWidth(unsigned char code)
{
    return code < firstCode ? 0 : widths[static_cast<size_t>(code - firstCode)];
}

} // namespace velmor::HelveticaMetrics
