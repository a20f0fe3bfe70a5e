#include "scanengine/Protocol.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonParseError>

#include <array>
#include <cmath>
#include <limits>

namespace scanengine {

namespace {

/// Longest part of a foreign word that is repeated in a message, in characters.
constexpr qsizetype longestQuote = 60;

constexpr std::array<std::pair<QLatin1StringView, Verb>, 6> verbs{
    {
     {QLatin1StringView("listDevices"), Verb::listDevices},
     {QLatin1StringView("scan"), Verb::scan},
     {QLatin1StringView("cancel"), Verb::cancel},
     {QLatin1StringView("calibrate"), Verb::calibrate},
     {QLatin1StringView("adjust"), Verb::adjust},
     {QLatin1StringView("quit"), Verb::quit},
     }
};

std::optional<Verb> verbOf(const QString &word)
{
    for (const auto &[name, verb] : verbs) {
        if (word == name)
            return verb;
    }
    return std::nullopt;
}

/// Takes typed values out of one JSON object and remembers the first key of the wrong type.
class FieldReader {
public:
    explicit FieldReader(QJsonObject object) : m_object(std::move(object)) {}

    [[nodiscard]] std::optional<QString> text(QLatin1StringView key)
    {
        const auto value = present(key, QJsonValue::String);
        return value ? std::optional(value->toString()) : std::nullopt;
    }

    [[nodiscard]] bool flag(QLatin1StringView key)
    {
        const auto value = present(key, QJsonValue::Bool);
        return value && value->toBool();
    }

    [[nodiscard]] std::optional<double> number(QLatin1StringView key)
    {
        const auto value = present(key, QJsonValue::Double);
        return value ? std::optional(value->toDouble()) : std::nullopt;
    }

    [[nodiscard]] std::optional<int> integer(QLatin1StringView key)
    {
        const auto value = number(key);
        if (!value)
            return std::nullopt;
        if (std::trunc(*value) != *value || std::abs(*value) > std::numeric_limits<int>::max()) {
            spoil(key);
            return std::nullopt;
        }
        return static_cast<int>(*value);
    }

    [[nodiscard]] FieldReader object(QLatin1StringView key)
    {
        const auto value = present(key, QJsonValue::Object);
        return FieldReader(value ? value->toObject() : QJsonObject());
    }

    /// The first key of the wrong type, empty when all were right.
    [[nodiscard]] const QString &spoiledKey() const { return m_spoiledKey; }

private:
    std::optional<QJsonValue> present(QLatin1StringView key, QJsonValue::Type type)
    {
        const QJsonValue value = m_object.value(key);
        if (value.isUndefined() || value.isNull())
            return std::nullopt;
        if (value.type() != type) {
            spoil(key);
            return std::nullopt;
        }
        return value;
    }

    void spoil(QLatin1StringView key)
    {
        if (m_spoiledKey.isEmpty())
            m_spoiledKey = key;
    }

    QJsonObject m_object;
    QString m_spoiledKey;
};

AutoSwitches readSwitches(FieldReader &fields)
{
    AutoSwitches switches;
    switches.crop = fields.flag(QLatin1StringView("crop"));
    switches.cropWidthMode = fields.text(QLatin1StringView("cropWidthMode"));
    switches.cropHeightMode = fields.text(QLatin1StringView("cropHeightMode"));
    switches.cropFixedWidthMm = fields.number(QLatin1StringView("cropFixedWidthMm"));
    switches.cropFixedHeightMm = fields.number(QLatin1StringView("cropFixedHeightMm"));
    switches.deskew = fields.flag(QLatin1StringView("deskew"));
    switches.cleanBackground = fields.flag(QLatin1StringView("cleanBackground"));
    switches.blankRemoval = fields.flag(QLatin1StringView("blankRemoval"));
    switches.autoLevels = fields.flag(QLatin1StringView("autoLevels"));
    switches.ocr = fields.flag(QLatin1StringView("ocr"));
    switches.ocrLanguage = fields.text(QLatin1StringView("ocrLanguage")).value_or(QString());
    switches.brightness = fields.integer(QLatin1StringView("brightness")).value_or(0);
    switches.contrast = fields.integer(QLatin1StringView("contrast")).value_or(0);
    return switches;
}

Result<Command> readJobCommand(Verb verb, const QJsonObject &object)
{
    FieldReader fields(object);
    Command command;
    command.verb = verb;
    command.deviceId = fields.text(QLatin1StringView("deviceId"));
    command.input = fields.text(QLatin1StringView("input"));
    command.driver = fields.text(QLatin1StringView("driver"));
    command.source = fields.text(QLatin1StringView("source"));
    command.dpi = fields.integer(QLatin1StringView("dpi"));
    command.colorMode = fields.text(QLatin1StringView("colorMode"));
    command.batchWaitForPaper = fields.flag(QLatin1StringView("batchWaitForPaper"));

    FieldReader switches = fields.object(QLatin1StringView("auto"));
    command.processing = readSwitches(switches);
    FieldReader output = fields.object(QLatin1StringView("output"));
    command.outputPath = output.text(QLatin1StringView("path"));
    command.outputFormat = output.text(QLatin1StringView("format"));

    for (const FieldReader *reader : {&fields, &switches, &output}) {
        if (!reader->spoiledKey().isEmpty())
            return Fault{QStringLiteral("The command's value for \"%1\" is of the wrong type.")
                             .arg(reader->spoiledKey())};
    }
    return command;
}

QString quoted(const QString &word)
{
    return QStringLiteral("\"%1\"").arg(
        word.size() > longestQuote ? word.left(longestQuote) + QChar(0x2026) : word);
}

QJsonObject make(QLatin1StringView word)
{
    return {
        {QStringLiteral("event"), word}
    };
}

QJsonObject make(QLatin1StringView word, const QString &key, const QJsonValue &value)
{
    QJsonObject object = make(word);
    object.insert(key, value);
    return object;
}

} // namespace

Result<Command> parseCommand(QByteArrayView line)
{
    QJsonParseError parseError;
    const auto document = QJsonDocument::fromJson(line.toByteArray(), &parseError);
    if (!document.isObject())
        return Fault{QStringLiteral("A line was not understood: it is not one JSON object.")};

    const QJsonObject object = document.object();
    const QJsonValue word = object.value(QLatin1StringView("cmd"));
    if (!word.isString())
        return Fault{QStringLiteral("A line was not understood: it names no command.")};

    const auto verb = verbOf(word.toString());
    if (!verb)
        return Fault{QStringLiteral("Unknown command: %1").arg(quoted(word.toString()))};
    if (*verb == Verb::scan || *verb == Verb::calibrate || *verb == Verb::adjust)
        return readJobCommand(*verb, object);
    Command command;
    command.verb = *verb;
    return command;
}

namespace event {

QJsonObject ready(const QString &version)
{
    return make(QLatin1StringView("ready"), QStringLiteral("version"), version);
}

QJsonObject devices(const QList<Device> &devices)
{
    QJsonArray array;
    for (const Device &device : devices) {
        array.append(QJsonObject{
            {QStringLiteral("id"),     device.id    },
            {QStringLiteral("name"),   device.name  },
            {QStringLiteral("driver"), device.driver}
        });
    }
    return make(QLatin1StringView("devices"), QStringLiteral("devices"), array);
}

QJsonObject scanStarted()
{
    return make(QLatin1StringView("scanStarted"));
}

QJsonObject status(const QString &message)
{
    return make(QLatin1StringView("status"), QStringLiteral("message"), message);
}

QJsonObject page(qsizetype number)
{
    return make(QLatin1StringView("page"), QStringLiteral("index"), number);
}

QJsonObject done(const QStringList &files, const QString &file)
{
    QJsonObject object = make(QLatin1StringView("done"), QStringLiteral("pages"), files.size());
    if (files.isEmpty())
        return object;
    object.insert(QStringLiteral("files"), QJsonArray::fromStringList(files));
    object.insert(QStringLiteral("file"), file);
    return object;
}

QJsonObject sample(const QString &file)
{
    return make(QLatin1StringView("sample"), QStringLiteral("file"), file);
}

QJsonObject adjusted(const QString &file)
{
    return make(QLatin1StringView("adjusted"), QStringLiteral("file"), file);
}

QJsonObject error(const QString &message)
{
    return make(QLatin1StringView("error"), QStringLiteral("message"), message);
}

} // namespace event

} // namespace scanengine
