#include "engine/EngineCommand.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace velmor {
namespace {

template <typename Value>
void insertIfSet(QJsonObject &object, QLatin1StringView key, const std::optional<Value> &value)
{
    if (value)
        object.insert(key, *value);
}

QJsonObject toJson(const EngineCommand::Auto &settings)
{
    QJsonObject object{
        {QStringLiteral("crop"),            settings.crop           },
        {QStringLiteral("deskew"),          settings.deskew         },
        {QStringLiteral("cleanBackground"), settings.cleanBackground},
        {QStringLiteral("blankRemoval"),    settings.blankRemoval   },
        {QStringLiteral("autoLevels"),      settings.autoLevels     },
        {QStringLiteral("ocr"),             settings.ocr            },
        {QStringLiteral("ocrLanguage"),     settings.ocrLanguage    },
        {QStringLiteral("brightness"),      settings.brightness     },
        {QStringLiteral("contrast"),        settings.contrast       },
    };
    insertIfSet(object, QLatin1StringView("cropWidthMode"), settings.cropWidthMode);
    insertIfSet(object, QLatin1StringView("cropHeightMode"), settings.cropHeightMode);
    insertIfSet(object, QLatin1StringView("cropFixedWidthMm"), settings.cropFixedWidthMm);
    insertIfSet(object, QLatin1StringView("cropFixedHeightMm"), settings.cropFixedHeightMm);
    return object;
}

QJsonObject toJson(const EngineCommand::Output &output)
{
    return {
        {QStringLiteral("path"),   output.path  },
        {QStringLiteral("format"), output.format},
    };
}

/// JSON has no word for infinity or "not a number"; Qt would write null in their place.
bool canBeWritten(const EngineCommand::Auto &settings)
{
    return std::isfinite(settings.cropFixedWidthMm.value_or(0)) &&
           std::isfinite(settings.cropFixedHeightMm.value_or(0));
}

} // namespace

QByteArray EngineCommand::encoded() const
{
    if (autoSettings && !canBeWritten(*autoSettings))
        return {};
    QJsonObject object{
        {QStringLiteral("cmd"), cmd}
    };
    insertIfSet(object, QLatin1StringView("deviceId"), deviceId);
    insertIfSet(object, QLatin1StringView("input"), input);
    insertIfSet(object, QLatin1StringView("driver"), driver);
    insertIfSet(object, QLatin1StringView("source"), source);
    insertIfSet(object, QLatin1StringView("dpi"), dpi);
    insertIfSet(object, QLatin1StringView("colorMode"), colorMode);
    insertIfSet(object, QLatin1StringView("batchWaitForPaper"), batchWaitForPaper);
    if (autoSettings)
        object.insert(QLatin1StringView("auto"), toJson(*autoSettings));
    if (output)
        object.insert(QLatin1StringView("output"), toJson(*output));
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace velmor
