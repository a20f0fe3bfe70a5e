#include "model/Models.h"

#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QStandardPaths>

#include <algorithm>
#include <pwd.h>
#include <unistd.h>

namespace velmor {

namespace {

struct DocumentTypeRow {
    DocumentType type;
    const char *rawValue;
    const char *title;
    const char *systemImage;
};

constexpr DocumentTypeRow documentTypes[] = {
    {DocumentType::document, "document", QT_TRANSLATE_NOOP("Models", "Document"), "doc.text"},
    {DocumentType::photo,    "photo",    QT_TRANSLATE_NOOP("Models", "Photo"),    "photo"   },
};

struct ColorModeRow {
    ColorMode mode;
    const char *rawValue;
    const char *engineValue;
    const char *title;
};

constexpr ColorModeRow colorModes[] = {
    {ColorMode::automatic, "auto",      "auto",  QT_TRANSLATE_NOOP("Models", "Auto") },
    {ColorMode::color,     "color",     "color", QT_TRANSLATE_NOOP("Models", "Color")},
    {ColorMode::grayscale, "grayscale", "gray",  QT_TRANSLATE_NOOP("Models", "Gray") },
    {ColorMode::bw,        "bw",        "bw",    QT_TRANSLATE_NOOP("Models", "B&W")  },
};

struct ScanQualityRow {
    ScanQuality quality;
    const char *title;
};

constexpr ScanQualityRow scanQualities[] = {
    {ScanQuality::low,    QT_TRANSLATE_NOOP("Models", "Low")   },
    {ScanQuality::medium, QT_TRANSLATE_NOOP("Models", "Medium")},
    {ScanQuality::high,   QT_TRANSLATE_NOOP("Models", "High")  },
};

/// What a tab decides, field by field.
struct TabDefaults {
    bool crop, deskew, clean, blankRemoval, autoLevels, ocr;
    ColorMode colorMode;
    const char *source;
    bool batch;
};

constexpr TabDefaults documentDefaults{true,   true, true, false, true, true, ColorMode::grayscale,
                                       "auto", true};
constexpr TabDefaults photoDefaults{true,      false, false, false, false, false, ColorMode::color,
                                    "flatbed", false};

const DocumentTypeRow &row(DocumentType type)
{
    return *std::ranges::find(documentTypes, type, &DocumentTypeRow::type);
}

const ColorModeRow &row(ColorMode mode)
{
    return *std::ranges::find(colorModes, mode, &ColorModeRow::mode);
}

} // namespace

QString rawValue(DocumentType type)
{
    return QString::fromUtf8(row(type).rawValue);
}

std::optional<DocumentType> documentTypeFromRawValue(const QString &word)
{
    for (const DocumentType type : allDocumentTypes) {
        if (word == rawValue(type))
            return type;
    }
    return std::nullopt;
}

QString title(DocumentType type)
{
    return QString::fromUtf8(row(type).title);
}

QString systemImage(DocumentType type)
{
    return QString::fromUtf8(row(type).systemImage);
}

void applyDefaults(DocumentType type, ScanSettings &settings)
{
    const TabDefaults &tab = type == DocumentType::photo ? photoDefaults : documentDefaults;
    settings.cropEnabled = tab.crop;
    settings.deskewEnabled = tab.deskew;
    settings.cleanEnabled = tab.clean;
    settings.blankRemovalEnabled = tab.blankRemoval;
    settings.autoLevelsEnabled = tab.autoLevels;
    settings.ocr = tab.ocr;
    settings.colorMode = tab.colorMode;
    settings.source = QString::fromUtf8(tab.source);
    settings.batch = tab.batch;
    settings.brightness = 0;
    settings.contrast = 0;
}

QString rawValue(ColorMode mode)
{
    return QString::fromUtf8(row(mode).rawValue);
}

QString engineValue(ColorMode mode)
{
    return QString::fromUtf8(row(mode).engineValue);
}

QString title(ColorMode mode)
{
    return QString::fromUtf8(row(mode).title);
}

std::optional<ColorMode> colorModeFromRawValue(const QString &word)
{
    for (const ColorModeRow &candidate : colorModes) {
        if (word == QLatin1StringView(candidate.rawValue))
            return candidate.mode;
    }
    return std::nullopt;
}

int rawValue(ScanQuality quality)
{
    return static_cast<int>(quality);
}

QString title(ScanQuality quality)
{
    return QString::fromUtf8(
        std::ranges::find(scanQualities, quality, &ScanQualityRow::quality)->title);
}

std::optional<ScanQuality> scanQualityFromRawValue(int dpi)
{
    for (const ScanQuality quality : allScanQualities) {
        if (dpi == rawValue(quality))
            return quality;
    }
    return std::nullopt;
}

QUrl defaultOutputFolder()
{
    // Services may run without the variable, and Qt takes the root folder then.
    if (qEnvironmentVariableIsEmpty("HOME")) {
        const passwd *user = getpwuid(geteuid());
        if (!user)
            qFatal("There is no home folder to keep scans in. Set HOME.");
        qputenv("HOME", user->pw_dir);
    }
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty())
        qFatal("There is no documents folder to keep scans in. Set HOME.");
    return QUrl::fromLocalFile(QDir(documents).filePath(QStringLiteral("Scans")));
}

QString fileStem(const QUrl &url)
{
    const QString fileName = url.fileName();
    const auto dot = fileName.lastIndexOf(QLatin1Char('.'));
    return dot > 0 ? fileName.left(dot) : fileName;
}

ScanResult::ScanResult(QUrl fileUrl, QDateTime fileDate)
    : url(std::move(fileUrl)), date(std::move(fileDate))
{
}

size_t qHash(const ScanResult &result, size_t seed) noexcept
{
    return qHashMulti(seed, result.id, result.url, result.date);
}

} // namespace velmor
