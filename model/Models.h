#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <array>
#include <optional>

/// The value types of a scan: what the user sets for it, and what comes out of it.
///
/// Plain values throughout: copied freely, usable on any thread.
namespace velmor {

/// The two built-in kinds of scan, which are the first two tabs of the card.
enum class DocumentType { document, photo };

/// How colour is handled. Stored (`rawValue`) and sent to the engine (`engineValue`) in two
/// different word forms, which must not be mixed.
enum class ColorMode { automatic, color, grayscale, bw };

/// Scan resolution. The enumerators are the dots per inch.
enum class ScanQuality { low = 150, medium = 300, high = 600 };

inline constexpr std::array allDocumentTypes{DocumentType::document, DocumentType::photo};
inline constexpr std::array allColorModes{ColorMode::automatic, ColorMode::color,
                                          ColorMode::grayscale, ColorMode::bw};
inline constexpr std::array allScanQualities{ScanQuality::low, ScanQuality::medium,
                                             ScanQuality::high};

struct ScanSettings;

/// The word that is stored, "document" or "photo".
[[nodiscard]] QString rawValue(DocumentType type);
/// The type of a stored word, or nothing.
[[nodiscard]] std::optional<DocumentType> documentTypeFromRawValue(const QString &word);
/// The label of the tab, and the first part of a scan's file name.
[[nodiscard]] QString title(DocumentType type);
/// The name of the symbol drawn for the type.
[[nodiscard]] QString systemImage(DocumentType type);
/// Overwrites the fields of `settings` that a tab decides; `quality`, `ocrLanguage` and
/// `outputFolder` stay as they are.
void applyDefaults(DocumentType type, ScanSettings &settings);

/// The word that a preset stores.
[[nodiscard]] QString rawValue(ColorMode mode);
/// The word that the engine receives; differs from `rawValue` for `grayscale` alone.
[[nodiscard]] QString engineValue(ColorMode mode);
[[nodiscard]] QString title(ColorMode mode);
/// The mode of a stored word; nothing for any other word, engine words included.
[[nodiscard]] std::optional<ColorMode> colorModeFromRawValue(const QString &word);

/// Dots per inch.
[[nodiscard]] int rawValue(ScanQuality quality);
[[nodiscard]] QString title(ScanQuality quality);
/// The quality of exactly this resolution, or nothing.
[[nodiscard]] std::optional<ScanQuality> scanQualityFromRawValue(int dpi);

/// "Scans" in the user's documents folder. Ends the program for a user without a home folder.
[[nodiscard]] QUrl defaultOutputFolder();

/// The name of a file without its folder and its last extension.
[[nodiscard]] QString fileStem(const QUrl &url);

/// Everything the user sets for a scan.
///
/// A new record is not what a tab sets: `blankRemovalEnabled` is on here and off after
/// `applyDefaults`, which the start of the program and every choice of a tab go through.
struct ScanSettings {
    ScanQuality quality = ScanQuality::medium;
    ColorMode colorMode = ColorMode::automatic;
    /// Where the paper is, in the engine's words: "auto" or "flatbed".
    QString source = QStringLiteral("auto");
    /// The next five are carried out by the engine.
    bool cropEnabled = true;
    bool deskewEnabled = true;
    bool cleanEnabled = true;
    bool blankRemovalEnabled = true;
    bool autoLevelsEnabled = true;
    /// Whether the application gives the PDF a text layer. The engine never recognises text.
    bool ocr = true;
    /// Sent to the engine and otherwise unused: recognition finds the language by itself.
    QString ocrLanguage = QStringLiteral("eng");
    /// Keep waiting for paper, until the job is cancelled.
    bool batch = true;
    /// Both -1000 to 1000, 0 for no change; carried out by the engine.
    int brightness = 0;
    int contrast = 0;
    /// Where finished scans go. The folder need not exist.
    QUrl outputFolder = defaultOutputFolder();

    bool operator==(const ScanSettings &) const = default;
};

/// A levels setting. `black` and `white` are on the scale 0 to 1 of encoded values; `gamma` is
/// the exponent itself, so above 1 darkens the midtones.
struct MagicSettings {
    double black;
    double white;
    double gamma;

    bool operator==(const MagicSettings &) const = default;
};

/// One saved file of the output folder.
///
/// `id` is new in every record, so two records of one file are unequal: whatever follows a file
/// keys on `url`.
struct ScanResult {
    ScanResult(QUrl fileUrl, QDateTime fileDate);

    QUuid id = QUuid::createUuid();
    QUrl url;
    QDateTime date; ///< When the scan was made.

    /// What the file is called, without its extension.
    [[nodiscard]] QString name() const { return fileStem(url); }

    bool operator==(const ScanResult &) const = default;
};

[[nodiscard]] size_t qHash(const ScanResult &result, size_t seed = 0) noexcept;

} // namespace velmor
