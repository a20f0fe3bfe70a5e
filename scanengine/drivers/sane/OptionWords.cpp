#include "scanengine/drivers/sane/OptionWords.h"

#include <QStringView>

#include <algorithm>
#include <initializer_list>

namespace scanengine {
namespace {

using Words = std::initializer_list<QStringView>;

/// Sources that never serve a page of paper.
constexpr Words otherSources = {u"transparen", u"tpu",  u"tma",  u"slide", u"negative",
                                u"positive",   u"film", u"card", u"back",  u"infrared"};
constexpr Words flatbedSources = {u"flatbed", u"flat bed", u"document table", u"platen", u"glass"};
/// Whole names, too short to be looked for in others.
constexpr Words flatbedNames = {u"fb", u"normal"};
constexpr Words feederSources = {u"adf", u"feeder", u"sheetfed", u"sheet fed", u"document feed"};
constexpr Words duplexWords = {u"duplex", u"both sides", u"two-sided", u"2-sided", u"double"};

constexpr Words grayModes = {u"gray", u"grey"};
constexpr Words colorModes = {u"color", u"colour", u"rgb", u"24bit", u"24 bit", u"48 bit"};
constexpr Words blackWhiteModes = {u"lineart",    u"binary",   u"black", u"halftone",
                                   u"monochrome", u"line art", u"text",  u"1-bit"};
constexpr Words blackWhiteNames = {u"bw", u"b&w", u"b/w", u"mono"};
/// Variants of a mode that are finer than 8 bits a sample, coarser, or meant for something else.
constexpr Words lesserModes = {u"16bit",    u"16 bit", u"gray16",    u"12bit",  u"12 bit",
                               u"14bit",    u"10bit",  u"48",        u"42",     u"36",
                               u"30",       u"fast",   u"diffusion", u"dither", u"halftone",
                               u"negative", u"256 c",  u"infrared"};

bool containsAny(const QString &word, const Words &parts)
{
    return std::any_of(parts.begin(), parts.end(), [&word](QStringView part) {
        return word.contains(part, Qt::CaseInsensitive);
    });
}

bool isAny(const QString &word, const Words &names)
{
    return std::any_of(names.begin(), names.end(), [&word](QStringView name) {
        return word.compare(name, Qt::CaseInsensitive) == 0;
    });
}

} // namespace

SourceKind sourceKind(const QString &word)
{
    if (containsAny(word, otherSources))
        return SourceKind::other;
    if (containsAny(word, duplexWords))
        return SourceKind::feederDuplex;
    if (containsAny(word, flatbedSources) || isAny(word, flatbedNames))
        return SourceKind::flatbed;
    return containsAny(word, feederSources) ? SourceKind::feeder : SourceKind::other;
}

std::optional<QString> duplexWord(const QStringList &words)
{
    const auto found = std::find_if(words.begin(), words.end(), [](const QString &word) {
        return containsAny(word, duplexWords) && !containsAny(word, otherSources);
    });
    return found == words.end() ? std::nullopt : std::optional(*found);
}

std::optional<Tones> tonesOf(const QString &word)
{
    if (containsAny(word, grayModes))
        return Tones::gray;
    // Before the colours: "Color Lineart" has none in between.
    if (containsAny(word, blackWhiteModes) || isAny(word, blackWhiteNames))
        return Tones::blackWhite;
    if (containsAny(word, colorModes))
        return Tones::color;
    return std::nullopt;
}

std::optional<QString> modeFor(Tones tones, const QStringList &words)
{
    std::optional<QString> lesser;
    for (const QString &word : words) {
        if (tonesOf(word) != tones)
            continue;
        if (!containsAny(word, lesserModes))
            return word;
        if (!lesser)
            lesser = word;
    }
    return lesser;
}

} // namespace scanengine
