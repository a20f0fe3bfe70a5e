#include "scanengine/drivers/sane/DeviceTitle.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <utility>

namespace scanengine {
namespace {

/// What backends put in the maker's place when they know none.
constexpr QStringView noMakers[] = {u"noname", u"unknown", u"generic", u"escl", u"wsd", u"sane"};

/// Makers that have more than one name, and the one to show.
constexpr std::pair<QStringView, QStringView> makerNames[] = {
    {u"hewlett-packard", u"HP"   },
    {u"hewlett packard", u"HP"   },
    {u"hp",              u"HP"   },
    {u"seiko epson",     u"Epson"},
};

/// "FUJITSU" as "Fujitsu". Short names are abbreviations: they stay.
QString inTitleCase(const QString &maker)
{
    constexpr qsizetype longestAbbreviation = 4;
    QStringList words = maker.split(u' ', Qt::SkipEmptyParts);
    for (QString &word : words) {
        if (word.size() > longestAbbreviation && word == word.toUpper())
            word = word.left(1) + word.mid(1).toLower();
    }
    return words.join(u' ');
}

QString tidy(QString text)
{
    // A mark for uniqueness that network names may end with, "[3c2af4a1b2c3]", and the connection.
    static const QRegularExpression mark(
        QStringLiteral("\\s*(?:\\[[0-9A-Fa-f:]{4,}\\]|\\([0-9A-Fa-f:]{6,}\\)|\\(USB\\))\\s*$"));
    return text.replace(u'_', u' ').remove(mark).simplified();
}

QString makerOf(const SaneDevice &device)
{
    const QString maker = tidy(device.vendor);
    for (const QStringView none : noMakers) {
        if (maker.compare(none, Qt::CaseInsensitive) == 0)
            return {};
    }
    for (const auto &[name, shown] : makerNames) {
        if (maker.compare(name, Qt::CaseInsensitive) == 0)
            return shown.toString();
    }
    return inTitleCase(maker);
}

/// `model` without a maker at its beginning.
QString withoutMaker(const QString &model, const QString &maker)
{
    QStringList names{maker};
    for (const auto &[name, shown] : makerNames) {
        if (shown == maker)
            names.append(name.toString());
    }
    for (const QString &name : std::as_const(names)) {
        const bool begins = model.startsWith(name, Qt::CaseInsensitive);
        if (begins && (model.size() == name.size() || model[name.size()] == u' '))
            return model.mid(name.size()).trimmed();
    }
    return model;
}

QSet<QString> wordsThatCount(const QString &title)
{
    static const QRegularExpression separators(QStringLiteral("[^a-z0-9]+"));
    QSet<QString> words;
    for (const QString &word : title.toLower().split(separators, Qt::SkipEmptyParts)) {
        if (word != u"series" && word != u"scanner" && word != u"usb")
            words.insert(word);
    }
    return words;
}

bool hasDigit(const QString &word)
{
    return std::any_of(word.begin(), word.end(), [](QChar c) { return c.isDigit(); });
}

} // namespace

QString deviceTitle(const SaneDevice &device)
{
    const QString maker = makerOf(device);
    const QString model = tidy(device.model);
    if (maker.isEmpty() && model.isEmpty())
        return device.name;
    if (maker.isEmpty())
        return model;
    return (maker + u' ' + withoutMaker(model, maker)).trimmed();
}

bool isSameModel(const QString &title, const QString &other)
{
    const QSet<QString> words = wordsThatCount(title);
    const QSet<QString> otherWords = wordsThatCount(other);
    const QSet<QString> &fewer = words.size() < otherWords.size() ? words : otherWords;
    const QSet<QString> &more = words.size() < otherWords.size() ? otherWords : words;
    return more.contains(fewer) && std::any_of(fewer.begin(), fewer.end(), hasDigit);
}

} // namespace scanengine
