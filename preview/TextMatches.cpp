#include "preview/TextMatches.h"

namespace velmor {

namespace {

/// What the renderer puts where a hyphen ends a line.
constexpr char16_t brokenWord = 0x02;
constexpr char16_t otherBrokenWord = 0xFFFE;
constexpr char16_t softHyphen = 0xAD;

/// A text in the form that texts are compared in, and where each of its characters came from.
struct Folded {
    QString text;
    QList<int> origins;

    void append(QChar letter, int origin)
    {
        text.append(letter);
        origins.append(origin);
    }
};

bool isBreak(QChar letter)
{
    return letter == brokenWord || letter == otherBrokenWord || letter == softHyphen;
}

Folded folded(const QString &text)
{
    Folded result;
    bool afterBreak = false;
    for (int index = 0; index < text.size(); ++index) {
        const QChar letter = text[index];
        if (isBreak(letter)) {
            afterBreak = true;
        } else if (!letter.isSpace()) {
            result.append(letter.toCaseFolded(), index);
            afterBreak = false;
        } else if (!afterBreak && !result.text.endsWith(u' ')) {
            result.append(u' ', index);
        }
    }
    return result;
}

} // namespace

QList<TextRange> textMatches(const QString &text, const QString &query)
{
    QList<TextRange> matches;
    const QString wanted = folded(query).text.trimmed();
    if (wanted.isEmpty())
        return matches;
    const Folded page = folded(text);
    for (qsizetype at = page.text.indexOf(wanted); at >= 0;
         at = page.text.indexOf(wanted, at + wanted.size())) {
        const int start = page.origins[at];
        const int last = page.origins[at + wanted.size() - 1];
        matches.append({start, last + 1 - start});
    }
    return matches;
}

} // namespace velmor
