#include "model/ScanPreset.h"

#include <QHashFunctions>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>

namespace velmor {

namespace {

const QString idKey = QStringLiteral("id");
const QString nameKey = QStringLiteral("name");
const QString brightnessKey = QStringLiteral("brightness");
const QString contrastKey = QStringLiteral("contrast");
const QString colorModeKey = QStringLiteral("colorMode");
const QString qualityKey = QStringLiteral("quality");
const QString ocrKey = QStringLiteral("ocr");
const QString batchKey = QStringLiteral("batch");
const QString folderBookmarkKey = QStringLiteral("folderBookmark");

QJsonObject toJson(const ScanPreset &preset)
{
    QJsonObject object{
        {idKey,         preset.id.toString(QUuid::WithoutBraces).toUpper()},
        {nameKey,       preset.name                                       },
        {brightnessKey, preset.brightness                                 },
        {contrastKey,   preset.contrast                                   },
        {colorModeKey,  preset.colorMode                                  },
        {qualityKey,    preset.quality                                    },
    };
    if (preset.ocr)
        object[ocrKey] = *preset.ocr;
    if (preset.batch)
        object[batchKey] = *preset.batch;
    if (preset.folderBookmark)
        object[folderBookmarkKey] = QString::fromLatin1(preset.folderBookmark->toBase64());
    return object;
}

/// Reads the fields of one object; any that isn't as it should be spoils the reading as a whole.
class FieldReader {
public:
    explicit FieldReader(const QJsonObject &object) : m_object(object) {}

    [[nodiscard]] bool isSound() const { return m_isSound; }

    QString text(const QString &key)
    {
        const QJsonValue value = m_object[key];
        m_isSound = m_isSound && value.isString();
        return value.toString();
    }

    int wholeNumber(const QString &key)
    {
        const QJsonValue value = m_object[key];
        const double number = value.toDouble();
        const bool isWhole = value.isDouble() && std::trunc(number) == number &&
                             std::abs(number) <= std::numeric_limits<int>::max();
        m_isSound = m_isSound && isWhole;
        return isWhole ? static_cast<int>(number) : 0;
    }

    QUuid uuid(const QString &key)
    {
        const QUuid uuid = QUuid::fromString(text(key));
        m_isSound = m_isSound && !uuid.isNull();
        return uuid;
    }

    std::optional<bool> optionalBool(const QString &key)
    {
        if (isAbsent(key))
            return {};
        m_isSound = m_isSound && m_object[key].isBool();
        return m_object[key].toBool();
    }

    std::optional<QByteArray> optionalBytes(const QString &key)
    {
        if (isAbsent(key))
            return {};
        const auto decoded = QByteArray::fromBase64Encoding(
            text(key).toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
        m_isSound = m_isSound && decoded;
        return *decoded;
    }

private:
    bool isAbsent(const QString &key) const
    {
        return m_object[key].isUndefined() || m_object[key].isNull();
    }

    const QJsonObject m_object;
    bool m_isSound = true;
};

std::optional<ScanPreset> fromJson(const QJsonObject &object)
{
    FieldReader fields(object);
    const ScanPreset preset{
        .id = fields.uuid(idKey),
        .name = fields.text(nameKey),
        .brightness = fields.wholeNumber(brightnessKey),
        .contrast = fields.wholeNumber(contrastKey),
        .colorMode = fields.text(colorModeKey),
        .quality = fields.wholeNumber(qualityKey),
        .ocr = fields.optionalBool(ocrKey),
        .batch = fields.optionalBool(batchKey),
        .folderBookmark = fields.optionalBytes(folderBookmarkKey),
    };
    return fields.isSound() ? std::optional(preset) : std::nullopt;
}

} // namespace

ScanSettings ScanPreset::appliedTo(ScanSettings settings) const
{
    settings.brightness = brightness;
    settings.contrast = contrast;
    settings.colorMode = colorModeFromRawValue(colorMode).value_or(settings.colorMode);
    settings.quality = scanQualityFromRawValue(quality).value_or(settings.quality);
    settings.ocr = ocr.value_or(settings.ocr);
    settings.batch = batch.value_or(settings.batch);
    return settings;
}

QString storedPresetName(QStringView typed)
{
    const auto isBlank = [](QChar character) {
        return character == u'\t' || character.category() == QChar::Separator_Space;
    };
    while (!typed.isEmpty() && isBlank(typed.front()))
        typed = typed.sliced(1);
    while (!typed.isEmpty() && isBlank(typed.back()))
        typed.chop(1);
    return typed.toString();
}

size_t qHash(const ScanPreset &preset, size_t seed) noexcept
{
    return qHashMulti(seed, preset.id, preset.name, preset.brightness, preset.contrast,
                      preset.colorMode, preset.quality, preset.ocr.has_value(),
                      preset.ocr.value_or(false), preset.batch.has_value(),
                      preset.batch.value_or(false), preset.folderBookmark.value_or(QByteArray()));
}

QByteArray encodedPresets(const QList<ScanPreset> &presets)
{
    QJsonArray array;
    for (const ScanPreset &preset : presets)
        array.append(toJson(preset));
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<ScanPreset>> decodedPresets(const QByteArray &stored)
{
    const QJsonDocument document = QJsonDocument::fromJson(stored);
    if (!document.isArray())
        return {};
    QList<ScanPreset> presets;
    for (const QJsonValue &entry : document.array()) {
        const std::optional<ScanPreset> preset = fromJson(entry.toObject());
        if (!preset)
            return {};
        presets.append(*preset);
    }
    return presets;
}

} // namespace velmor
