#include "pipeline/GlyphlessFont.h"

#include <QString>
#include <unicode/uchar.h>

#include <algorithm>

namespace velmor {

namespace {

constexpr int unitsPerEm = 1000;
constexpr int averageWidth = 556; // Helvetica's digits

/// Big-endian numbers, one behind the other.
class TableBytes {
public:
    TableBytes &u16(std::initializer_list<int> values)
    {
        for (const int value : values) {
            m_bytes += static_cast<char>(value >> 8);
            m_bytes += static_cast<char>(value);
        }
        return *this;
    }

    TableBytes &u32(std::initializer_list<quint32> values)
    {
        for (const quint32 value : values)
            u16({static_cast<int>(value >> 16), static_cast<int>(value & 0xFFFF)});
        return *this;
    }

    TableBytes &raw(const QByteArray &bytes)
    {
        m_bytes += bytes;
        return *this;
    }

    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

QByteArray padded(QByteArray bytes)
{
    while (bytes.size() % 4 != 0)
        bytes += '\0';
    return bytes;
}

/// The sum of the big-endian 32-bit words, the end filled up with zeros.
quint32 checksum(const QByteArray &bytes)
{
    const QByteArray words = padded(bytes);
    quint32 sum = 0;
    for (qsizetype i = 0; i < words.size(); i += 4) {
        for (qsizetype k = 0; k < 4; ++k)
            sum += static_cast<quint32>(static_cast<uchar>(words[i + k])) << (24 - 8 * k);
    }
    return sum;
}

using Tables = std::map<QByteArray, QByteArray>;

/// The directory of tables, then the tables, each at a multiple of four bytes.
QByteArray assembled(const Tables &tables)
{
    const int count = static_cast<int>(tables.size());
    int power = 1;
    int exponent = 0;
    while (power * 2 <= count) {
        power *= 2;
        ++exponent;
    }
    TableBytes directory;
    directory.u32({0x00010000}).u16({count, power * 16, exponent, (count - power) * 16});
    const qsizetype start = 12 + 16 * tables.size();
    QByteArray body;
    for (const auto &[tag, table] : tables) {
        directory.raw(tag).u32({checksum(table), static_cast<quint32>(start + body.size()),
                                static_cast<quint32>(table.size())});
        body += padded(table);
    }
    return directory.bytes() + body;
}

/// The head table; `adjustment` makes the whole file's checksum come out as the format wants it.
QByteArray headTable(quint32 adjustment)
{
    TableBytes head;
    head.u32({0x00010000, 0x00010000, adjustment, 0x5F0F3CF5}).u16({0, unitsPerEm});
    head.u32({0, 0, 0, 0}); // made and changed at the epoch, so that equal pages are equal bytes
    return head.u16({0, 0, unitsPerEm, unitsPerEm, 0, 3, 2, 0, 0}).bytes();
}

QByteArray utf16Hex(char32_t character)
{
    const QString text = QString::fromUcs4(&character, 1);
    QByteArray hex;
    for (const QChar unit : text)
        hex += QByteArray::number(unit.unicode(), 16).rightJustified(4, '0');
    return hex;
}

} // namespace

int GlyphlessFont::glyph(char32_t character)
{
    const auto [place, isNew] =
        m_glyphs.try_emplace(character, static_cast<int>(m_characters.size()) + 1);
    if (isNew)
        m_characters.push_back(character);
    return place->second;
}

int GlyphlessFont::advanceWidth(char32_t character)
{
    const auto code = static_cast<UChar32>(character);
    switch (u_charType(code)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
        return 0;
    default:
        break;
    }
    const int width = u_getIntPropertyValue(code, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? unitsPerEm : averageWidth;
}

QByteArray GlyphlessFont::trueTypeFile() const
{
    const int glyphCount = static_cast<int>(m_characters.size()) + 1;
    TableBytes advances;
    advances.u16({unitsPerEm, 0});
    for (const char32_t character : m_characters)
        advances.u16({advanceWidth(character), 0});

    Tables tables;
    tables["head"] = headTable(0);
    tables["hhea"] = TableBytes()
                         .u32({0x00010000})
                         .u16({unitsPerEm, 0, 0, unitsPerEm, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0})
                         .u16({glyphCount})
                         .bytes();
    tables["maxp"] = TableBytes()
                         .u32({0x00010000})
                         .u16({glyphCount, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0})
                         .bytes();
    tables["hmtx"] = advances.bytes();
    tables["loca"] = QByteArray(2 * (glyphCount + 1), '\0'); // every outline is empty
    tables["glyf"] = QByteArray(1, '\0');                    // some readers refuse an empty table
    tables["head"] = headTable(0xB1B0AFBA - checksum(assembled(tables)));
    return assembled(tables);
}

QByteArray GlyphlessFont::toUnicodeMap() const
{
    QByteArray map = "/CIDInit /ProcSet findresource begin\n"
                     "12 dict begin\n"
                     "begincmap\n"
                     "/CIDSystemInfo <</Registry (Adobe) /Ordering (UCS) /Supplement 0>> def\n"
                     "/CMapName /Adobe-Identity-UCS def\n"
                     "/CMapType 2 def\n"
                     "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
    constexpr size_t mostInABlock = 100; // of the format
    for (size_t first = 0; first < m_characters.size(); first += mostInABlock) {
        const size_t end = std::min(first + mostInABlock, m_characters.size());
        map += QByteArray::number(static_cast<int>(end - first)) + " beginbfchar\n";
        for (size_t i = first; i < end; ++i) {
            map += '<' + QByteArray::number(static_cast<int>(i + 1), 16).rightJustified(4, '0') +
                   "> <" + utf16Hex(m_characters[i]) + ">\n";
        }
        map += "endbfchar\n";
    }
    return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

} // namespace velmor
