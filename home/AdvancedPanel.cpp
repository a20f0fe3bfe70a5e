#include "home/AdvancedPanel.h"

#include "model/Derived.h"
#include "model/Labels.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

constexpr std::array enhanceSteps{&ScanSettings::cropEnabled, &ScanSettings::deskewEnabled,
                                  &ScanSettings::cleanEnabled, &ScanSettings::blankRemovalEnabled,
                                  &ScanSettings::autoLevelsEnabled};

template <typename Values> QStringList labels(const Values &values)
{
    QStringList labels;
    for (const auto value : values)
        labels.append(label(value));
    return labels;
}

template <typename Values> int indexOf(const Values &values, typename Values::value_type value)
{
    return static_cast<int>(std::ranges::find(values, value) - values.begin());
}

} // namespace

QString folderLabel(const QUrl &folder)
{
    const QStringList parts = folder.path().split(u'/', Qt::SkipEmptyParts);
    const QString end = parts.mid(std::max<qsizetype>(0, parts.size() - 2)).join(u'/');
    return parts.size() > 2 ? QStringLiteral("…/") + end : end;
}

void AdvancedPanel::setModel(AppModel *model)
{
    if (m_model == model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (model) {
        connect(model, &AppModel::settingsChanged, this, &AdvancedPanel::refresh);
        connect(model, &AppModel::selectedPresetChanged, this, &AdvancedPanel::refresh);
        connect(model, &AppModel::activeCustomPresetChanged, this, &AdvancedPanel::refresh);
        refresh();
    }
    Q_EMIT modelChanged();
}

void AdvancedPanel::refresh()
{
    derive(this, m_settings, m_model->settings(), &AdvancedPanel::settingsChanged);
    derive(this, m_modified, m_model->isModifiedFromDefaults(), &AdvancedPanel::modifiedChanged);
}

void AdvancedPanel::apply(const ScanSettings &settings)
{
    if (m_model)
        m_model->setSettings(settings);
}

QStringList AdvancedPanel::qualityTitles()
{
    return labels(allScanQualities);
}

int AdvancedPanel::quality() const
{
    return indexOf(allScanQualities, m_settings.quality);
}

void AdvancedPanel::setQuality(int index)
{
    if (index >= 0 && index < static_cast<int>(allScanQualities.size()))
        set(&ScanSettings::quality, allScanQualities[static_cast<size_t>(index)]);
}

QStringList AdvancedPanel::colorModeTitles()
{
    return labels(allColorModes);
}

int AdvancedPanel::colorMode() const
{
    return indexOf(allColorModes, m_settings.colorMode);
}

void AdvancedPanel::setColorMode(int index)
{
    if (index >= 0 && index < static_cast<int>(allColorModes.size()))
        set(&ScanSettings::colorMode, allColorModes[static_cast<size_t>(index)]);
}

ToggleState AdvancedPanel::enhanceState() const
{
    const auto on =
        std::ranges::count_if(enhanceSteps, [this](auto step) { return m_settings.*step; });
    if (on == 0)
        return ToggleState::Off;
    return on == std::ssize(enhanceSteps) ? ToggleState::On : ToggleState::Partial;
}

void AdvancedPanel::toggleAllEnhance()
{
    const bool on = enhanceState() != ToggleState::On;
    ScanSettings settings = m_settings;
    for (const auto step : enhanceSteps)
        settings.*step = on;
    apply(settings);
}

void AdvancedPanel::chooseFolder(const QUrl &folder)
{
    if (m_model && folder.isLocalFile())
        m_model->setOutputFolder(folder);
}

void AdvancedPanel::calibrate()
{
    if (m_model)
        m_model->setShowCalibration(true);
}

void AdvancedPanel::setPresetName(const QString &name)
{
    derive(this, m_presetName, name, &AdvancedPanel::presetNameChanged);
}

void AdvancedPanel::savePreset()
{
    if (!m_model || !canSavePreset())
        return;
    m_model->saveCurrentAsPreset(m_presetName, m_presetIncludesFolder
                                                   ? AppModel::PresetFolder::include
                                                   : AppModel::PresetFolder::leaveOut);
    setPresetName({});
    derive(this, m_showPresetSave, false, &AdvancedPanel::showPresetSaveChanged);
}

} // namespace velmor
