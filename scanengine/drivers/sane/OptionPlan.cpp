#include "scanengine/drivers/sane/OptionPlan.h"

#include "scanengine/drivers/sane/OptionChoice.h"
#include "scanengine/drivers/sane/OptionWords.h"
#include "scanengine/drivers/sane/PageArea.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace scanengine {
namespace {

/// The names that backends have for an option, the usual one first.
constexpr QStringView sourceNames[] = {u"source", u"doc-source"};
constexpr QStringView modeNames[] = {u"mode", u"image-type"};
constexpr QStringView depthNames[] = {u"depth", u"bit-depth"};
constexpr QStringView duplexNames[] = {u"duplex", u"adf-mode", u"double-sided", u"duplex-mode"};
/// Words that let a feeder take sheet after sheet, and the whole bed be scanned.
constexpr std::pair<QStringView, QStringView> wordsWanted[] = {
    {u"feeder-mode", u"continuous"},
    {u"paper-size",  u"user_def"  },
    {u"scan-area",   u"maximum"   },
};
/// Processing in the device that may cut, bend or drop pages, and what makes it wait for a person.
constexpr QStringView offNames[] = {
    u"preview",         u"swdeskew",     u"swcrop",        u"hwdeskewcrop",    u"hwcrop",
    u"adf-crp",         u"adf-skew",     u"crop",          u"deskew",          u"auto-crop",
    u"auto-deskew",     u"custom-gamma", u"negative",      u"inverse",         u"invert",
    u"blank-page-skip", u"fit-to-page",  u"lamp-off-scan", u"wait-for-button", u"button-controlled",
};
constexpr QStringView zeroNames[] = {u"swskip", u"swdespeck", u"brightness", u"contrast"};
/// What only devices have that feed sheets.
constexpr QStringView signsOfFeeder[] = {u"feeder-mode", u"adf-mode", u"duplex", u"page-height"};

/// How far a resolution may be from the one asked for and still be it, in dots per inch.
constexpr double sameDpi = 0.5;

template <typename Names>
const SaneOption *firstOption(const SaneOptions &options, const Names &names)
{
    for (const QStringView name : names) {
        const SaneOption *option = findOption(options, name);
        if (option && option->isActive)
            return option;
    }
    return nullptr;
}

bool hasKind(const QStringList &sources, SourceKind kind)
{
    return std::any_of(sources.begin(), sources.end(),
                       [kind](const QString &word) { return sourceKind(word) == kind; });
}

SourceKind currentSource(const SaneOptions &options)
{
    const SaneOption *source = firstOption(options, sourceNames);
    const auto *word = source ? std::get_if<QString>(&source->value) : nullptr;
    return word ? sourceKind(*word) : SourceKind::other;
}

/// The places paper can be taken from.
struct Places {
    bool hasFeeder = false;
    bool hasFlatbed = false;
};

Places placesOf(const SaneOptions &options)
{
    const SaneOption *source = firstOption(options, sourceNames);
    QStringList words = source ? wordsOf(*source) : QStringList();
    if (const auto *word = source ? std::get_if<QString>(&source->value) : nullptr)
        words.append(*word);
    Places places;
    places.hasFeeder =
        hasKind(words, SourceKind::feeder) || hasKind(words, SourceKind::feederDuplex);
    places.hasFlatbed = hasKind(words, SourceKind::flatbed);
    if (!places.hasFeeder && !places.hasFlatbed)
        places.hasFeeder = paperSensor(options) || firstOption(options, signsOfFeeder);
    return places;
}

/// The settings that are still to be made, in the order in which they should be.
class Goals {
public:
    explicit Goals(const SaneOptions &options) : m_options(options) {}

    void add(const SaneOption *option, const SaneValue &value)
    {
        const bool hasValue = !std::holds_alternative<std::monostate>(value);
        if (option && isOpen(*option) && hasValue && !isSameValue(option->value, value))
            m_settings.append({option->index, option->name, value});
    }

    void addNumber(QStringView name, const std::optional<double> &number)
    {
        const SaneOption *option = findOption(m_options, name);
        if (option && number)
            add(option, valueFor(*option, *number));
    }

    void addSwitch(QStringView name, bool isOn)
    {
        const SaneOption *option = findOption(m_options, name);
        if (option && option->type == SaneType::boolean)
            add(option, isOn);
    }

    void addWord(QStringView name, QStringView word)
    {
        const SaneOption *option = findOption(m_options, name);
        if (!option)
            return;
        for (const QString &legal : wordsOf(*option)) {
            if (legal.compare(word, Qt::CaseInsensitive) == 0)
                add(option, legal);
        }
    }

    [[nodiscard]] const SaneOptions &options() const { return m_options; }
    [[nodiscard]] const QList<SaneSetting> &settings() const { return m_settings; }

private:
    const SaneOptions &m_options;
    QList<SaneSetting> m_settings;
};

/// The first source of the first kind that the device has.
void addSource(Goals &goals, std::initializer_list<SourceKind> kinds)
{
    const SaneOption *source = firstOption(goals.options(), sourceNames);
    const QStringList words = source ? wordsOf(*source) : QStringList();
    for (const SourceKind kind : kinds) {
        const auto found = std::find_if(words.begin(), words.end(), [kind](const QString &word) {
            return sourceKind(word) == kind;
        });
        if (found != words.end())
            return goals.add(source, *found);
    }
}

void addDuplex(Goals &goals)
{
    const SaneOption *duplex = firstOption(goals.options(), duplexNames);
    if (!duplex)
        return;
    if (duplex->type == SaneType::boolean)
        goals.add(duplex, true);
    else if (const auto word = duplexWord(wordsOf(*duplex)))
        goals.add(duplex, *word);
}

void addMode(Goals &goals, ColorMode colorMode)
{
    const SaneOption *mode = firstOption(goals.options(), modeNames);
    if (!mode)
        return;
    const bool isColorWanted = colorMode == ColorMode::automatic || colorMode == ColorMode::color;
    const Tones first = isColorWanted ? Tones::color : Tones::gray;
    const Tones second = isColorWanted ? Tones::gray : Tones::color;
    for (const Tones tones : {first, second, Tones::blackWhite}) {
        if (const auto word = modeFor(tones, wordsOf(*mode)))
            return goals.add(mode, *word);
    }
}

void addDepth(Goals &goals)
{
    constexpr double bits = 8;
    const SaneOption *depth = firstOption(goals.options(), depthNames);
    if (depth)
        goals.addNumber(depth->name, notBelow(*depth, bits));
}

void addResolution(Goals &goals, int dpi)
{
    for (const QStringView name : {u"resolution", u"x-resolution", u"y-resolution"}) {
        if (const SaneOption *option = findOption(goals.options(), name))
            goals.addNumber(name, notBelow(*option, dpi));
    }
}

/// Only a zero in the middle is known to be neutral: a scale may also begin with it.
void addZero(Goals &goals, QStringView name)
{
    const SaneOption *option = findOption(goals.options(), name);
    const auto limits = option ? limitsOf(*option) : std::nullopt;
    const bool isAmount = name.startsWith(u"sw");
    if (limits && (limits->minimum < 0 || isAmount) && limits->minimum <= 0 && limits->maximum > 0)
        goals.addNumber(name, 0);
}

void addNeutral(Goals &goals)
{
    for (const QStringView name : offNames)
        goals.addSwitch(name, false);
    for (const QStringView name : zeroNames)
        addZero(goals, name);
}

} // namespace

OptionPlan::OptionPlan(const CaptureWish &wish) : m_wish(wish) {}

std::optional<SaneSetting> OptionPlan::nextSetting(const SaneOptions &options)
{
    choosePlace(options);
    const bool isFeeder = m_place == Place::feeder;
    Goals goals(options);
    if (isFeeder) {
        addSource(goals, {SourceKind::feederDuplex, SourceKind::feeder});
        addDuplex(goals);
    } else {
        addSource(goals, {SourceKind::flatbed});
    }
    for (const auto &[name, word] : wordsWanted)
        goals.addWord(name, word);
    for (const QStringView name : paperEndNames)
        goals.addSwitch(name, isFeeder);
    addMode(goals, m_wish.colorMode);
    addDepth(goals);
    addResolution(goals, m_wish.dpi);
    addNeutral(goals);
    for (const PageEdge &edge : pageEdges(options, capture(options)))
        goals.addNumber(edge.option, edge.position);

    for (const SaneSetting &setting : goals.settings()) {
        if (m_set.contains(setting.name))
            continue;
        m_set.append(setting.name);
        return setting;
    }
    return std::nullopt;
}

void OptionPlan::choosePlace(const SaneOptions &options)
{
    if (!m_place) {
        const Places places = placesOf(options);
        m_hasFeeder = places.hasFeeder;
        m_hasFlatbed = places.hasFlatbed;
        const bool isFlatbedWanted = m_wish.source == PaperSource::flatbed && m_hasFlatbed;
        m_place = m_hasFeeder && !isFlatbedWanted ? Place::feeder : Place::flatbed;
    }
    // Some sensors can be read only once the feeder is the source.
    if (feederHoldsPaper(options) == false)
        static_cast<void>(fallBackToFlatbed());
}

bool OptionPlan::fallBackToFlatbed()
{
    if (m_place != Place::feeder || !m_hasFlatbed)
        return false;
    m_place = Place::flatbed;
    m_set.clear();
    return true;
}

Capture OptionPlan::capture(const SaneOptions &options) const
{
    const SourceKind source = currentSource(options);
    const Places places = placesOf(options);
    const SaneOption *duplex = firstOption(options, duplexNames);
    Capture capture;
    capture.isFeeder = source == SourceKind::feeder || source == SourceKind::feederDuplex ||
                       (places.hasFeeder && !places.hasFlatbed);
    const auto *isOn = duplex ? std::get_if<bool>(&duplex->value) : nullptr;
    const auto *word = duplex ? std::get_if<QString>(&duplex->value) : nullptr;
    const bool isDuplexOn = (isOn && *isOn) || (word && duplexWord({*word}));
    capture.isDuplex = capture.isFeeder && (source == SourceKind::feederDuplex || isDuplexOn);

    const auto dpiBy = [&options](QStringView axis, double otherwise) {
        const SaneOption *option = findOption(options, axis);
        return option && option->isActive ? currentNumber(*option, otherwise) : otherwise;
    };
    const double dpi = dpiBy(u"resolution", m_wish.dpi);
    capture.xDpi = dpiBy(u"x-resolution", dpi);
    capture.yDpi = dpiBy(u"y-resolution", dpi);
    capture.needsResampling = std::abs(capture.xDpi - m_wish.dpi) > sameDpi ||
                              std::abs(capture.yDpi - m_wish.dpi) > sameDpi;
    capture.areaMm = pageAreaMm(options, capture);
    return capture;
}

} // namespace scanengine
