#pragma once

#include "model/Models.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>
#include <QUuid>

#include <optional>

namespace velmor {

/// The user's own preset: the settings that matter from scan to scan, under a name.
///
/// A plain value. `colorMode` and `quality` are in their stored form, so that one that this version
/// doesn't know still loads; it then changes nothing.
struct ScanPreset {
    QUuid id;
    QString name; ///< What presets are told apart by, exactly.
    int brightness = 0;
    int contrast = 0;
    QString colorMode;         ///< Raw value of a `ColorMode`.
    int quality = 0;           ///< Raw value of a `ScanQuality`: dots per inch.
    std::optional<bool> ocr;   ///< Absent: leave the setting alone; so in older presets.
    std::optional<bool> batch; ///< Likewise.
    std::optional<QByteArray> folderBookmark; ///< As `folderBookmark` gives it.

    /// `settings` with this preset's fields; those without a valid value stay.
    [[nodiscard]] ScanSettings appliedTo(ScanSettings settings) const;

    bool operator==(const ScanPreset &) const = default;
};

/// `typed` as the name of a preset: without the blanks around it. Line ends are none. Empty if
/// nothing is left to call a preset by.
[[nodiscard]] QString storedPresetName(QStringView typed);

[[nodiscard]] size_t qHash(const ScanPreset &preset, size_t seed = 0) noexcept;

/// The stored form of `presets`: a JSON array, a preset an object, absent fields left out.
[[nodiscard]] QByteArray encodedPresets(const QList<ScanPreset> &presets);

/// The presets of a stored list. Nothing if any of it isn't as it should be: no JSON array, or an
/// entry with a required key missing or a known key of the wrong type. Unknown keys are ignored.
[[nodiscard]] std::optional<QList<ScanPreset>> decodedPresets(const QByteArray &stored);

} // namespace velmor
