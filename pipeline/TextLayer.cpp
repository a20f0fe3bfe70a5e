#include "pipeline/TextLayer.h"

#include "pipeline/HelveticaMetrics.h"
#include "pipeline/PdfNumber.h"
#include "pipeline/VisualOrder.h"

#include <QChar>
#include <QList>

namespace velmor {

namespace {

constexpr double fontSizeOfHeight = 0.85;
constexpr double baselineOfHeight = 0.18;

/// One line as the operand of TJ, and its width in thousandths of the font size.
struct SetText {
    const char *font;
    QByteArray operand;
    double width = 0;
};

/// `text` without what isn't a character or would break the line.
QString settable(const QString &text)
{
    QString result;
    for (const uint character : text.toUcs4()) {
        if (QChar::isSurrogate(character))
            result += QChar(QChar::ReplacementCharacter);
        else if (QChar::category(character) == QChar::Other_Control)
            result += u' ';
        else
            result += QChar::fromUcs4(character);
    }
    return result;
}

QByteArray hexadecimal(uint number, int digits)
{
    return QByteArray::number(number, 16).rightJustified(digits, '0');
}

std::optional<SetText> setInHelvetica(const QString &text)
{
    SetText set{TextLayer::helveticaName, "<", 0};
    for (const uint character : text.toUcs4()) {
        const auto code = HelveticaMetrics::winAnsiCode(character);
        if (!code)
            return std::nullopt;
        set.operand += hexadecimal(*code, 2);
        set.width += HelveticaMetrics::advanceWidth(*code);
    }
    set.operand += '>';
    return set;
}

SetText setGlyphless(const QString &text, GlyphlessFont &font)
{
    SetText set{TextLayer::glyphlessName, "<", 0};
    for (const uint character : text.toUcs4()) {
        set.operand += hexadecimal(font.glyph(character), 4);
        set.width += GlyphlessFont::advanceWidth(character);
    }
    set.operand += '>';
    return set;
}

/// Paints in reading order, and moves the pen to each character's place on paper.
SetText setRightToLeft(const QString &text, const QList<qsizetype> &order, GlyphlessFont &font)
{
    const QList<uint> characters = text.toUcs4();
    SetText set{TextLayer::glyphlessName, {}, 0};
    QList<double> places(characters.size());
    for (const qsizetype index : order) {
        places[index] = set.width;
        set.width += GlyphlessFont::advanceWidth(characters[index]);
    }
    double pen = 0;
    for (qsizetype index = 0; index < characters.size(); ++index) {
        set.operand += pdfNumber(pen - places[index]) + '<' +
                       hexadecimal(font.glyph(characters[index]), 4) + '>';
        pen = places[index] + GlyphlessFont::advanceWidth(characters[index]);
    }
    return set;
}

/// The characters in paper order, as a text string of a PDF.
QByteArray paperText(const QString &text, const QList<qsizetype> &order)
{
    const QList<uint> characters = text.toUcs4();
    QByteArray result = "<feff";
    for (const qsizetype index : order) {
        const auto units = QChar::fromUcs4(characters[index]);
        for (const QChar unit : QStringView(units))
            result += hexadecimal(unit.unicode(), 4);
    }
    return result + '>';
}

/// The line in the form that the readers of the field give back exactly.
///
/// Left-to-right text needs no more than its characters in order. With right-to-left text readers
/// disagree: some give characters back as they are painted, others expect paper order and turn it
/// round themselves. So it is painted in reading order, for the former, under an ActualText in
/// paper order, for the latter.
QByteArray shown(const SetText &set, const QString &text, const QList<qsizetype> &order)
{
    if (order.isEmpty())
        return '[' + set.operand + "] TJ\n";
    return "/Span <</ActualText " + paperText(text, order) + ">> BDC\n[" + set.operand +
           "] TJ\nEMC\n";
}

void appendLine(TextLayer &layer, const OcrLine &line, QSizeF page)
{
    const double x = line.box.left() * page.width();
    const double y = line.box.top() * page.height();
    const double width = line.box.width() * page.width();
    const double height = line.box.height() * page.height();
    if (!(width > 0) || !(height > 1))
        return;

    const QString text = settable(line.text);
    const QList<qsizetype> order =
        hasRightToLeftText(text) ? visualOrder(text) : QList<qsizetype>();
    std::optional<SetText> set = setInHelvetica(text);
    if (set)
        layer.usesHelvetica = true;
    else if (order.isEmpty())
        set = setGlyphless(text, layer.glyphless);
    else
        set = setRightToLeft(text, order, layer.glyphless);

    const double size = height * fontSizeOfHeight;
    const double natural = set->width * size / 1000;
    const double stretch = natural > 0 ? width / natural : 1;
    layer.operators += QByteArray(set->font) + ' ' + pdfNumber(size) + " Tf " + pdfNumber(stretch) +
                       " 0 0 1 " + pdfNumber(x) + ' ' + pdfNumber(y + height * baselineOfHeight) +
                       " Tm\n" + shown(*set, text, order);
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
