#include "pipeline/recognition/LineAssembly.h"

#include <algorithm>
#include <numeric>
#include <ranges>

namespace velmor {

namespace {

/// A gap of so many line heights is no space between words: those reach 1.5 in justified text.
constexpr double widestWordGap = 2.5;

/// Lines below are mostly pictures, stains and rules; text that is hard to read is above.
constexpr double leastConfidence = 40;
/// What a line needs whose characters are few, or hardly letters and digits.
constexpr double oddLineConfidence = 70;

/// Characters of scripts without spaces between words.
bool runsOn(QChar c)
{
    switch (c.script()) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Thai:
        return true;
    default:
        // CJK punctuation, and full-width forms.
        return (c.unicode() >= 0x3000 && c.unicode() <= 0x303F) || c.unicode() >= 0xFF00;
    }
}

double meanOf(const RecognizedWords &words)
{
    double sum = 0;
    double weight = 0;
    for (const RecognizedWord &word : words) {
        sum += word.confidence * static_cast<double>(word.text.size());
        weight += static_cast<double>(word.text.size());
    }
    return weight > 0 ? sum / weight : 0;
}

bool isPlausible(const RecognizedWords &words)
{
    const double confidence = meanOf(words);
    if (confidence < leastConfidence)
        return false;
    const QString text = lineText(words);
    const auto sound = std::ranges::count_if(text, [](QChar c) { return c.isLetterOrNumber(); });
    const auto spaces = text.count(u' ');
    const bool odd = sound < 3 || sound * 2 < text.size() - spaces;
    return sound > 0 && (!odd || confidence >= oddLineConfidence);
}

/// White between two boxes on a line, in whichever direction it runs.
int gapBetween(const QRect &a, const QRect &b)
{
    return std::max(a.left() - b.right(), b.left() - a.right()) - 1;
}

int lineHeight(const RecognizedWords &words)
{
    std::vector<int> heights;
    for (const RecognizedWord &word : words)
        heights.push_back(word.box.height());
    const auto middle = heights.begin() + std::ssize(heights) / 2;
    std::ranges::nth_element(heights, middle);
    return *middle;
}

std::vector<RecognizedWords> cutAtWideGaps(const RecognizedWords &words)
{
    const double widest = widestWordGap * lineHeight(words);
    std::vector<RecognizedWords> pieces;
    for (const RecognizedWord &word : words) {
        const bool apart =
            pieces.empty() || gapBetween(pieces.back().back().box, word.box) > widest;
        if (apart)
            pieces.emplace_back();
        pieces.back().push_back(word);
    }
    return pieces;
}

QRectF boxOf(const RecognizedWords &words, QSize page)
{
    QRect box;
    for (const RecognizedWord &word : words)
        box |= word.box;
    box &= QRect(QPoint(0, 0), page);
    return {static_cast<double>(box.x()) / page.width(),
            static_cast<double>(box.y()) / page.height(),
            static_cast<double>(box.width()) / page.width(),
            static_cast<double>(box.height()) / page.height()};
}

/// From a page turned clockwise by `degrees` back to the image. Origins at the top left.
QRectF turnedBack(const QRectF &box, int degrees)
{
    switch (degrees) {
    case 90:
        return {box.top(), 1 - box.right(), box.height(), box.width()};
    case 180:
        return {1 - box.right(), 1 - box.bottom(), box.width(), box.height()};
    case 270:
        return {1 - box.bottom(), box.left(), box.height(), box.width()};
    default:
        return box;
    }
}

QRectF fromLowerLeft(const QRectF &box)
{
    return {box.left(), 1 - box.bottom(), box.width(), box.height()};
}

} // namespace

QString lineText(const RecognizedWords &words)
{
    QString text;
    for (const RecognizedWord &word : words) {
        const bool joined = text.isEmpty() || (runsOn(text.back()) && runsOn(word.text.front()));
        if (!joined)
            text.append(u' ');
        text.append(word.text);
    }
    return text;
}

std::vector<OcrLine> assembleLines(const TextAnswer &text, QSize page, int degrees)
{
    std::vector<OcrLine> lines;
    for (const RecognizedWords &words : text.lines | std::views::filter(isPlausible)) {
        for (const RecognizedWords &piece : cutAtWideGaps(words)) {
            const QRectF box = fromLowerLeft(turnedBack(boxOf(piece, page), degrees));
            if (box.isValid())
                lines.push_back({lineText(piece), box});
        }
    }
    return lines;
}

QString wholeText(const TextAnswer &text)
{
    QString whole;
    for (const RecognizedWords &words : text.lines)
        whole += lineText(words) + u'\n';
    return whole;
}

double meanConfidence(const TextAnswer &text)
{
    RecognizedWords all;
    for (const RecognizedWords &words : text.lines)
        all.insert(all.end(), words.begin(), words.end());
    return meanOf(all);
}

} // namespace velmor
