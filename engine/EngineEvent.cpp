#include "engine/EngineEvent.h"

#include <QHashFunctions>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>

namespace velmor {
namespace {

bool isAbsent(const QJsonValue &value)
{
    return value.isUndefined() || value.isNull();
}

std::optional<QString> textValue(const QJsonValue &value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<int> wholeNumber(const QJsonValue &value)
{
    const double number = value.toDouble(std::numeric_limits<double>::quiet_NaN());
    if (!(number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max()))
        return {};
    if (std::trunc(number) != number)
        return {};
    return static_cast<int>(number);
}

/// Reads the fields of one JSON object and keeps in mind whether one of them had a wrong type.
class FieldReader {
public:
    explicit FieldReader(QJsonObject object) : m_object(std::move(object)) {}

    std::optional<QString> text(QLatin1StringView key) { return read(key, textValue); }

    QString requiredText(QLatin1StringView key)
    {
        const std::optional<QString> value = text(key);
        if (!value)
            m_wellTyped = false;
        return value.value_or(QString());
    }

    std::optional<int> integer(QLatin1StringView key) { return read(key, wholeNumber); }

    /// The array of `key`, each element read by `element`, which answers an optional.
    template <typename Element> auto array(QLatin1StringView key, Element element)
    {
        return read(key, [&](const QJsonValue &value) { return readArray(value, element); });
    }

    [[nodiscard]] bool wellTyped() const { return m_wellTyped; }

private:
    template <typename Read>
    auto read(QLatin1StringView key, Read readValue) -> decltype(readValue(QJsonValue()))
    {
        const QJsonValue value = m_object.value(key);
        if (isAbsent(value))
            return {};
        auto result = readValue(value);
        if (!result)
            m_wellTyped = false;
        return result;
    }

    template <typename Element>
    static auto readArray(const QJsonValue &value, Element element)
        -> std::optional<QList<typename decltype(element(QJsonValue()))::value_type>>
    {
        if (!value.isArray())
            return {};
        QList<typename decltype(element(QJsonValue()))::value_type> list;
        const QJsonArray elements = value.toArray();
        for (const QJsonValue &item : elements) {
            auto read = element(item);
            if (!read)
                return {};
            list.append(std::move(*read));
        }
        return list;
    }

    QJsonObject m_object;
    bool m_wellTyped = true;
};

std::optional<EngineEvent::Device> deviceElement(const QJsonValue &value)
{
    if (!value.isObject())
        return {};
    FieldReader fields(value.toObject());
    const EngineEvent::Device device{
        .id = fields.requiredText(QLatin1StringView("id")),
        .name = fields.requiredText(QLatin1StringView("name")),
        .driver = fields.requiredText(QLatin1StringView("driver")),
    };
    return fields.wellTyped() ? std::optional(device) : std::nullopt;
}

std::optional<QString> cutToLength(const std::optional<QString> &message)
{
    if (!message || message->size() <= maximumMessageLength)
        return message;
    QString cut = message->left(maximumMessageLength - 1);
    if (cut.back().isHighSurrogate())
        cut.chop(1);
    return cut + QChar(u'…');
}

} // namespace

std::optional<EngineEvent> EngineEvent::decode(const QByteArray &line)
{
    // Qt's parser refuses invalid UTF-8 and anything nested deeper than 1024 levels.
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!document.isObject())
        return {};
    FieldReader fields(document.object());
    EngineEvent event;
    event.event = fields.requiredText(QLatin1StringView("event"));
    event.version = fields.text(QLatin1StringView("version"));
    event.message = cutToLength(fields.text(QLatin1StringView("message")));
    event.index = fields.integer(QLatin1StringView("index"));
    event.pages = fields.integer(QLatin1StringView("pages"));
    event.file = fields.text(QLatin1StringView("file"));
    event.files = fields.array(QLatin1StringView("files"), textValue);
    event.devices = fields.array(QLatin1StringView("devices"), deviceElement);
    return fields.wellTyped() ? std::optional(event) : std::nullopt;
}

size_t qHash(const EngineEvent::Device &device, size_t seed) noexcept
{
    return qHashMulti(seed, device.id, device.name, device.driver);
}

} // namespace velmor
