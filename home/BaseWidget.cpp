#include "home/BaseWidget.h"

#include "model/Derived.h"
#include "model/Labels.h"

#include <algorithm>

namespace velmor {

namespace {

const QString presetTab = QStringLiteral("Preset");

} // namespace

QStringList settingsChips(const ScanSettings &settings)
{
    QStringList chips{BaseWidget::tr("%1 dpi").arg(rawValue(settings.quality)),
                      label(settings.colorMode)};
    if (settings.ocr)
        chips.append(BaseWidget::tr("+ OCR"));
    if (settings.batch)
        chips.append(BaseWidget::tr("Batch"));
    return chips;
}

BaseWidget::BaseWidget(QObject *parent) : QObject(parent)
{
    m_bubbleHide.setSingleShot(true);
    connect(&m_bubbleHide, &QTimer::timeout, this, &BaseWidget::refreshBubble);
}

void BaseWidget::setModel(AppModel *model)
{
    if (m_model == model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (model) {
        connect(model, &AppModel::selectedPresetChanged, this, &BaseWidget::refreshTabs);
        connect(model, &AppModel::presetsChanged, this, &BaseWidget::refreshTabs);
        connect(model, &AppModel::activeCustomPresetChanged, this, &BaseWidget::refreshTabs);
        connect(model, &AppModel::settingsChanged, this, &BaseWidget::refreshBubble);
        connect(model, &AppModel::lastErrorChanged, this, &BaseWidget::refreshBar);
        connect(model, &AppModel::resultsChanged, this, &BaseWidget::refreshBar);
        connect(model, &AppModel::showAdvancedChanged, this, &BaseWidget::refreshBar);
        connect(model, &AppModel::showScansChanged, this, &BaseWidget::refreshBar);
        refreshTabs();
        refreshBar();
    }
    Q_EMIT modelChanged();
}

void BaseWidget::refreshTabs()
{
    QStringList tabs;
    for (const DocumentType type : allDocumentTypes)
        tabs.append(title(type));
    QStringList names;
    for (const ScanPreset &preset : m_model->presets())
        names.append(preset.name);
    if (!names.isEmpty())
        tabs.append(presetTab);

    const std::optional<ScanPreset> &active = m_model->activeCustomPreset();
    derive(this, m_presetName,
           active            ? active->name
           : names.isEmpty() ? tabLabel(presetTab)
                             : names.first(),
           &BaseWidget::presetNameChanged);
    derive(this, m_activePreset, active ? active->name : QString(),
           &BaseWidget::activePresetChanged);
    derive(this, m_presetNames, names, &BaseWidget::presetNamesChanged);
    derive(this, m_tab, active ? presetTab : title(m_model->selectedPreset()),
           &BaseWidget::tabChanged);
    derive(this, m_tabItems, tabs, &BaseWidget::tabItemsChanged);
    if (!tabs.contains(m_hoveredTab))
        leaveTab(m_hoveredTab);
    refreshBubble();
}

void BaseWidget::refreshBubble()
{
    derive(this, m_showBubble, m_hoveringTabs || bubbleFlash(), &BaseWidget::showBubbleChanged);
    if (!m_model)
        return;
    derive(this, m_displayTab, m_hoveredTab.isEmpty() ? m_tab : m_hoveredTab,
           &BaseWidget::displayTabChanged);
    derive(this, m_chips,
           settingsChips(m_displayTab == m_tab ? m_model->settings()
                                               : m_model->previewSettings(m_displayTab)),
           &BaseWidget::chipsChanged);
}

void BaseWidget::refreshBar()
{
    derive(this, m_lastError, m_model->lastError().value_or(QString()),
           &BaseWidget::lastErrorChanged);
    derive(this, m_scanCount, static_cast<int>(m_model->results().size()),
           &BaseWidget::scanCountChanged);
    derive(this, m_showAdvanced, m_model->showAdvanced(), &BaseWidget::showAdvancedChanged);
    derive(this, m_showScans, m_model->showScans(), &BaseWidget::showScansChanged);
}

QString BaseWidget::tabLabel(const QString &tab) const
{
    if (tab == presetTab)
        return tr("Preset");
    const auto *const type =
        std::ranges::find(allDocumentTypes, tab, [](DocumentType each) { return title(each); });
    return type == allDocumentTypes.end() ? tab : label(*type);
}

void BaseWidget::setHoveringTabs(bool hovering)
{
    derive(this, m_hoveringTabs, hovering, &BaseWidget::hoveringTabsChanged);
    refreshBubble();
}

void BaseWidget::setShowPresetMenu(bool show)
{
    derive(this, m_showPresetMenu, show, &BaseWidget::showPresetMenuChanged);
}

void BaseWidget::enterTab(const QString &tab)
{
    derive(this, m_hoveredTab, tab, &BaseWidget::hoveredTabChanged);
    refreshBubble();
}

void BaseWidget::leaveTab(const QString &tab)
{
    if (tab == m_hoveredTab)
        enterTab({});
}

void BaseWidget::clickTab(const QString &tab)
{
    if (!m_model)
        return;
    if (tab == presetTab)
        activatePreset();
    else
        m_model->selectPreset(tab == title(DocumentType::photo) ? DocumentType::photo
                                                                : DocumentType::document);
    flashBubble();
}

void BaseWidget::activatePreset()
{
    if (!m_model)
        return;
    if (const std::optional<ScanPreset> active = m_model->activeCustomPreset())
        m_model->applyPreset(*active);
    else if (!m_model->presets().isEmpty())
        m_model->applyPreset(m_model->presets().first());
}

void BaseWidget::flashBubble()
{
    m_bubbleHide.start(bubbleTime);
    refreshBubble();
}

std::optional<ScanPreset> BaseWidget::preset(const QString &name) const
{
    if (!m_model)
        return std::nullopt;
    const QList<ScanPreset> &presets = m_model->presets();
    const auto found = std::ranges::find(presets, name, &ScanPreset::name);
    return found == presets.end() ? std::nullopt : std::optional(*found);
}

void BaseWidget::choosePreset(const QString &name)
{
    setShowPresetMenu(false);
    if (const std::optional<ScanPreset> chosen = preset(name))
        m_model->applyPreset(*chosen);
    flashBubble();
}

void BaseWidget::deletePreset(const QString &name)
{
    if (const std::optional<ScanPreset> doomed = preset(name))
        m_model->deletePreset(*doomed);
    if (m_presetNames.isEmpty())
        setShowPresetMenu(false);
}

void BaseWidget::openSettings()
{
    if (m_model)
        m_model->setShowAdvanced(true);
}

void BaseWidget::toggleAdvanced()
{
    if (m_model)
        m_model->setShowAdvanced(!m_model->showAdvanced());
}

void BaseWidget::toggleScans()
{
    if (m_model)
        m_model->setShowScans(!m_model->showScans());
}

} // namespace velmor
