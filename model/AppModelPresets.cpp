#include "model/AppModel.h"
#include "model/FolderBookmark.h"

namespace velmor {

namespace {

const QString presetsKey = QStringLiteral("customPresets");

} // namespace

void AppModel::selectPreset(DocumentType type)
{
    assign(m_selectedPreset, type, &AppModel::selectedPresetChanged);
    assign(m_activeCustomPreset, std::nullopt, &AppModel::activeCustomPresetChanged);
    ScanSettings settings = m_settings;
    applyDefaults(type, settings);
    setSettings(settings);
}

void AppModel::loadPresets()
{
    if (const auto presets = decodedPresets(m_store.value(presetsKey).toByteArray()))
        assign(m_presets, *presets, &AppModel::presetsChanged);
}

void AppModel::saveCurrentAsPreset(const QString &name, PresetFolder folder)
{
    const QString trimmed = storedPresetName(name);
    if (trimmed.isEmpty())
        return;
    const ScanPreset preset{
        .id = QUuid::createUuid(),
        .name = trimmed,
        .brightness = m_settings.brightness,
        .contrast = m_settings.contrast,
        .colorMode = rawValue(m_settings.colorMode),
        .quality = rawValue(m_settings.quality),
        .ocr = m_settings.ocr,
        .batch = m_settings.batch,
        .folderBookmark = folder == PresetFolder::include ? folderBookmark(m_settings.outputFolder)
                                                          : std::nullopt,
    };
    QList<ScanPreset> presets = m_presets;
    presets.removeIf([&](const ScanPreset &other) { return other.name == trimmed; });
    presets.append(preset);
    storePresets(presets);
    assign(m_activeCustomPreset, preset, &AppModel::activeCustomPresetChanged);
    flash(tr("Saved preset “%1”").arg(trimmed));
}

void AppModel::deletePreset(const ScanPreset &preset)
{
    // `preset` may be one of the list's own.
    const QString name = preset.name;
    QList<ScanPreset> presets = m_presets;
    presets.removeIf([&](const ScanPreset &other) { return other.name == name; });
    storePresets(presets);
    if (m_activeCustomPreset && m_activeCustomPreset->name == name)
        selectPreset(m_selectedPreset);
}

void AppModel::storePresets(const QList<ScanPreset> &presets)
{
    assign(m_presets, presets, &AppModel::presetsChanged);
    m_store.setValue(presetsKey, encodedPresets(m_presets));
}

void AppModel::applyPreset(const ScanPreset &preset)
{
    const ScanPreset applied = preset;
    assign(m_activeCustomPreset, applied, &AppModel::activeCustomPresetChanged);
    setSettings(applied.appliedTo(m_settings));
    if (!applied.folderBookmark)
        return;
    if (const std::optional<QUrl> folder = bookmarkedFolder(*applied.folderBookmark))
        setOutputFolder(*folder);
}

ScanSettings AppModel::previewSettings(const QString &tab) const
{
    ScanSettings settings = m_settings;
    if (tab == u"Preset") {
        if (m_activeCustomPreset)
            return m_activeCustomPreset->appliedTo(settings);
        return m_presets.isEmpty() ? settings : m_presets.first().appliedTo(settings);
    }
    applyDefaults(tab == u"Photo" ? DocumentType::photo : DocumentType::document, settings);
    return settings;
}

bool AppModel::isModifiedFromDefaults() const
{
    ScanSettings defaults;
    applyDefaults(m_selectedPreset, defaults);
    if (m_activeCustomPreset)
        defaults = m_activeCustomPreset->appliedTo(defaults);
    const auto compared = [](const ScanSettings &settings) {
        return std::tuple(settings.quality, settings.colorMode, settings.batch, settings.ocr,
                          settings.cropEnabled, settings.deskewEnabled, settings.cleanEnabled,
                          settings.blankRemovalEnabled, settings.autoLevelsEnabled);
    };
    return compared(defaults) != compared(m_settings);
}

} // namespace velmor
