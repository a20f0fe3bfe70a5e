#include "pipeline/recognition/LanguageGuess.h"

#include "pipeline/recognition/LanguageWords.h"

#include <algorithm>
#include <vector>

namespace velmor {

namespace {

/// Fewer words than this say nothing.
constexpr size_t fewestWords = 12;
/// Running text has 25 to 50 common words in a hundred, another language's at most ten or so.
constexpr double leastShare = 0.12;
/// How far the best language must be ahead of the next.
constexpr double clearLead = 1.25;

std::vector<QString> lowerCaseWords(QStringView text)
{
    std::vector<QString> words;
    QString word;
    const auto finish = [&] {
        if (!word.isEmpty())
            words.push_back(std::exchange(word, {}));
    };
    for (const QChar c : text) {
        if (c.isLetter())
            word.append(c.toLower());
        else
            finish();
    }
    finish();
    return words;
}

bool isCommonWord(QStringView word, QStringView commonWords)
{
    for (const QStringView common : commonWords.tokenize(u' ')) {
        if (common == word)
            return true;
    }
    return false;
}

const LanguageFacts *factsOf(const QString &language)
{
    const auto languages = knownLanguages();
    const auto facts =
        std::ranges::find_if(languages, [&](const auto &known) { return known.name == language; });
    return facts == languages.end() ? nullptr : &*facts;
}

/// The share of `words` that are common ones of `language`, 0 to 1.
double shareOf(const std::vector<QString> &words, const QString &language)
{
    if (!hasCommonWords(language) || words.size() < fewestWords)
        return 0;
    const QStringView commonWords = factsOf(language)->commonWords;
    const auto common = std::ranges::count_if(
        words, [&](const QString &word) { return isCommonWord(word, commonWords); });
    return static_cast<double>(common) / static_cast<double>(words.size());
}

} // namespace

bool hasCommonWords(const QString &language)
{
    const LanguageFacts *facts = factsOf(language);
    return facts && !facts->commonWords.isEmpty();
}

std::optional<QString> guessLanguage(QStringView text, const QStringList &languages)
{
    const std::vector<QString> words = lowerCaseWords(text);
    QString best;
    double bestShare = 0;
    double nextShare = 0;
    for (const QString &language : languages) {
        const double share = shareOf(words, language);
        if (share > bestShare) {
            nextShare = std::exchange(bestShare, share);
            best = language;
        } else {
            nextShare = std::max(nextShare, share);
        }
    }
    if (bestShare < leastShare || bestShare < clearLead * nextShare)
        return std::nullopt;
    return best;
}

QStringList languagesForScript(const QString &script, const QStringList &installed)
{
    QStringList found;
    for (const QString &language : readingLanguages(installed)) {
        const LanguageFacts *facts = factsOf(language);
        const bool reads = facts && facts->script == script;
        // Kanji alone look like Chinese, and Chinese set small like Japanese.
        const bool eastAsian =
            facts &&
            (script == QLatin1StringView("Han") || script == QLatin1StringView("Japanese")) &&
            (facts->script == QLatin1StringView("Han") ||
             facts->script == QLatin1StringView("Japanese"));
        if (reads || eastAsian)
            found.append(language);
    }
    return found;
}

QStringList readingLanguages(const QStringList &installed)
{
    QStringList found;
    for (const QString &name : installed) {
        const bool special = name == QLatin1StringView("osd") || name == QLatin1StringView("equ") ||
                             name == QLatin1StringView("snum") || name.contains(u'/') ||
                             name.endsWith(QLatin1StringView("_vert"));
        if (!special)
            found.append(name);
    }
    return found;
}

QString languageForLocale(const QString &locale)
{
    for (const LanguageFacts &facts : knownLanguages()) {
        if (locale.section(u'_', 0, 0) == facts.locale)
            return facts.name;
    }
    return {};
}

} // namespace velmor
