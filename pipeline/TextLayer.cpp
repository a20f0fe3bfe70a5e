#include "pipeline/TextLayer.h"

#include "pipeline/HelveticaMetrics.h"
#include "pipeline/PdfNumber.h"

#include <QChar>
#include <QList>
#include <unicode/ubidi.h>

#include <algorithm>

namespace velmor {

namespace {

constexpr double fontSizeOfHeight = 0.85;
constexpr double baselineOfHeight = 0.18;

/// One line's string operand, and its width in thousandths of the font size.
struct SetText {
    const char *font;
    QByteArray operand;
    double width = 0;
};

bool isRightToLeft(const QString &text)
{
    return std::ranges::any_of(text, [](QChar character) {
        const QChar::Direction direction = character.direction();
        return direction == QChar::DirR || direction == QChar::DirAL;
    });
}

/// The characters from left to right as they stand on paper.
QString visualOrder(const QString &text)
{
    if (!isRightToLeft(text))
        return text;
    const auto length = static_cast<int32_t>(text.size());
    const auto *logical = reinterpret_cast<const UChar *>(text.utf16());
    const std::unique_ptr<UBiDi, decltype(&ubidi_close)> bidi(ubidi_open(), &ubidi_close);
    QString visual(text.size() * 2, Qt::Uninitialized);
    UErrorCode status = U_ZERO_ERROR;
    ubidi_setPara(bidi.get(), logical, length, UBIDI_DEFAULT_LTR, nullptr, &status);
    const int32_t written = ubidi_writeReordered(
        bidi.get(), reinterpret_cast<UChar *>(visual.data()), static_cast<int32_t>(visual.size()),
        UBIDI_KEEP_BASE_COMBINING | UBIDI_DO_MIRRORING, &status);
    return U_SUCCESS(status) ? visual.left(written) : text;
}

/// The line's characters; what isn't one, or would break the line, becomes a harmless one.
QList<uint> characters(const QString &text)
{
    QList<uint> result = visualOrder(text).toUcs4();
    for (uint &character : result) {
        if (QChar::isSurrogate(character))
            character = QChar::ReplacementCharacter;
        else if (QChar::category(character) == QChar::Other_Control)
            character = ' ';
    }
    return result;
}

std::optional<SetText> setInHelvetica(const QList<uint> &text)
{
    SetText set{TextLayer::helveticaName, "<", 0};
    for (const uint character : text) {
        const auto code = HelveticaMetrics::winAnsiCode(character);
        if (!code)
            return std::nullopt;
        set.operand += QByteArray::number(*code, 16).rightJustified(2, '0');
        set.width += HelveticaMetrics::advanceWidth(*code);
    }
    set.operand += '>';
    return set;
}

SetText setGlyphless(const QList<uint> &text, GlyphlessFont &font)
{
    SetText set{TextLayer::glyphlessName, "<", 0};
    for (const uint character : text) {
        set.operand += QByteArray::number(font.glyph(character), 16).rightJustified(4, '0');
        set.width += GlyphlessFont::advanceWidth(character);
    }
    set.operand += '>';
    return set;
}

void appendLine(TextLayer &layer, const OcrLine &line, QSizeF page)
{
    const double x = line.box.left() * page.width();
    const double y = line.box.top() * page.height();
    const double width = line.box.width() * page.width();
    const double height = line.box.height() * page.height();
    if (!(width > 0) || !(height > 1))
        return;

    const QList<uint> text = characters(line.text);
    std::optional<SetText> set = setInHelvetica(text);
    if (set)
        layer.usesHelvetica = true;
    else
        set = setGlyphless(text, layer.glyphless);

    const double size = height * fontSizeOfHeight;
    const double natural = set->width * size / 1000;
    const double stretch = natural > 0 ? width / natural : 1;
    layer.operators += QByteArray(set->font) + ' ' + pdfNumber(size) + " Tf " + pdfNumber(stretch) +
                       " 0 0 1 " + pdfNumber(x) + ' ' + pdfNumber(y + height * baselineOfHeight) +
                       " Tm " + set->operand + " Tj\n";
}

} // namespace

TextLayer textLayer(std::span<const OcrLine> lines, QSizeF size)
{
    TextLayer layer;
    for (const OcrLine &line : lines)
        appendLine(layer, line, size);
    // Text render mode 3 draws nothing.
    if (!layer.operators.isEmpty())
        layer.operators = "q BT 3 Tr\n" + layer.operators + "ET Q\n";
    return layer;
}

} // namespace velmor
