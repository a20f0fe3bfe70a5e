#pragma once

#include <QByteArray>

#include <map>
#include <vector>

namespace velmor {

/// A font without outlines, for text that is only selected and searched and that Helvetica lacks.
///
/// Made for the characters of one page: each gets a glyph of its own that draws nothing, so that
/// viewers keep them apart. Lives while one page is being built; one thread.
class GlyphlessFont {
public:
    /// The glyph number of `character`, from 1 in the order of first use.
    [[nodiscard]] int glyph(char32_t character);

    /// The advance width that `character` gets, in thousandths of the font size: 0 for marks that
    /// combine with the character before, 1000 for wide East Asian characters.
    [[nodiscard]] static int advanceWidth(char32_t character);

    [[nodiscard]] bool isEmpty() const { return m_characters.empty(); }

    /// The characters in glyph order, the first being that of glyph 1.
    [[nodiscard]] const std::vector<char32_t> &characters() const { return m_characters; }

    /// The font as a TrueType file: glyph 0 for the undefined, then the characters'.
    [[nodiscard]] QByteArray trueTypeFile() const;

    /// The CMap that gives each two-byte glyph number its character back (ISO 32000-1, 9.10.3).
    [[nodiscard]] QByteArray toUnicodeMap() const;

private:
    std::map<char32_t, int> m_glyphs;
    std::vector<char32_t> m_characters;
};

} // namespace velmor
