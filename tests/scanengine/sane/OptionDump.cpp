#include "OptionDump.h"

#include <QHash>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace scanengine {
namespace {

SaneUnit unitOf(const QString &text)
{
    static const QHash<QString, SaneUnit> units{
        {QStringLiteral("mm"),  SaneUnit::millimetre },
        {QStringLiteral("dpi"), SaneUnit::dpi        },
        {QStringLiteral("bit"), SaneUnit::bit        },
        {QStringLiteral("pel"), SaneUnit::pixel      },
        {QStringLiteral("%"),   SaneUnit::percent    },
        {QStringLiteral("us"),  SaneUnit::microsecond}
    };
    return units.value(text, SaneUnit::none);
}

SaneValue valueOf(const QString &text, SaneType type)
{
    if (text == u"inactive" || text.isEmpty())
        return {};
    switch (type) {
    case SaneType::boolean:
        return text == u"yes";
    case SaneType::integer:
        return text.toInt();
    case SaneType::fixed:
        return text.toDouble();
    default:
        return text;
    }
}

/// Reads what the option may be, as in "75|150|300dpi", "0..216mm (in steps of 1)", "Gray|Color".
void readConstraint(SaneOption &option, const QString &text)
{
    static const QRegularExpression range(
        QStringLiteral("^(-?[\\d.]+)\\.\\.(-?[\\d.]+)(mm|dpi|bit|pel|%|us)?(?:,\\.\\.\\.)?"
                       "(?: \\(in steps of ([\\d.]+)\\))?$"));
    static const QRegularExpression numbers(
        QStringLiteral("^(-?[\\d.]+(?:\\|-?[\\d.]+)*)(mm|dpi|bit|pel|%|us)?$"));
    if (text == u"[=(yes|no)]") {
        option.type = SaneType::boolean;
    } else if (const auto match = range.match(text); match.hasMatch()) {
        option.unit = unitOf(match.captured(3));
        option.constraint = SaneRange{match.captured(1).toDouble(), match.captured(2).toDouble(),
                                      match.captured(4).toDouble()};
        option.count = text.contains(u",...") ? 256 : 1;
    } else if (const auto list = numbers.match(text); list.hasMatch()) {
        option.unit = unitOf(list.captured(2));
        QList<double> values;
        const QStringList words = list.captured(1).split(u'|');
        for (const QString &number : words)
            values.append(number.toDouble());
        option.constraint = values;
    } else if (text.isEmpty()) {
        option.type = SaneType::button;
    } else {
        option.type = SaneType::text;
        option.constraint = text.split(u'|');
    }
    if (option.unit == SaneUnit::millimetre)
        option.type = SaneType::fixed;
}

/// The long names of the options that scanimage prints as a single letter.
QString nameOf(const QString &shown)
{
    static const QHash<QString, QString> letters{
        {QStringLiteral("-l"), QStringLiteral("tl-x")},
        {QStringLiteral("-t"), QStringLiteral("tl-y")},
        {QStringLiteral("-x"), QStringLiteral("br-x")},
        {QStringLiteral("-y"), QStringLiteral("br-y")}
    };
    return letters.value(shown, shown.startsWith(u"--") ? shown.mid(2) : shown);
}

} // namespace

SaneOptions parseOptionDump(const QByteArray &dump)
{
    static const QRegularExpression line(
        QStringLiteral("^(--?[a-z][a-z0-9-]*)(\\[=\\(yes\\|no\\)\\]| .*?)?(?: \\[([^\\]]*)\\])?"
                       "((?: \\[(?:hardware|advanced|read-only|inactive)\\])*)$"));
    SaneOptions options;
    const QStringList lines = QString::fromUtf8(dump).split(u'\n');
    for (const QString &text : lines) {
        const QString trimmed = text.trimmed();
        if (!trimmed.startsWith(u'-'))
            continue;
        const auto match = line.match(trimmed);
        EXPECT_TRUE(match.hasMatch()) << trimmed.toStdString();
        SaneOption option;
        option.index = int(options.size()) + 1;
        option.name = nameOf(match.captured(1));
        readConstraint(option, match.captured(2).trimmed());
        const QString marks = match.captured(4);
        option.isSettable = !marks.contains(u"hardware") && !marks.contains(u"read-only");
        option.isAdvanced = marks.contains(u"advanced");
        option.isActive = match.captured(3) != u"inactive" && !marks.contains(u"inactive");
        option.value = valueOf(match.captured(3), option.type);
        options.append(option);
    }
    return options;
}

QString inShort(const SaneValue &value)
{
    if (const auto *flag = std::get_if<bool>(&value))
        return *flag ? QStringLiteral("yes") : QStringLiteral("no");
    if (const auto *integer = std::get_if<int>(&value))
        return QString::number(*integer);
    if (const auto *real = std::get_if<double>(&value))
        return QString::number(*real, 'g', 5);
    const auto *text = std::get_if<QString>(&value);
    return text ? *text : QString();
}

QString inShort(const SaneSetting &setting)
{
    return setting.name + u'=' + inShort(setting.value);
}

} // namespace scanengine
