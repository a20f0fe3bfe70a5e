#pragma once

#include "model/AppModel.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// What the settings bubble says of `settings`, chip by chip, in the user's language.
[[nodiscard]] QStringList settingsChips(const ScanSettings &settings);

/// The state of the card: its tabs, the bubble under them that shows what a tab sets, the menu of
/// the user's presets, and the bar at its bottom. `ScanArea` is the round button between.
///
/// Follows the model and keeps presentation state only. A tab is known by its title in English,
/// "Document", "Photo" or "Preset", as the model knows it; an empty title is no tab. Without a
/// model all is empty, and the operations do nothing. Lives on the main thread.
class BaseWidget : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::AppModel *model READ model WRITE setModel NOTIFY modelChanged REQUIRED)
    Q_PROPERTY(QStringList tabItems READ tabItems NOTIFY tabItemsChanged)
    Q_PROPERTY(QString tab READ tab NOTIFY tabChanged)
    Q_PROPERTY(QString displayTab READ displayTab NOTIFY displayTabChanged)
    Q_PROPERTY(QString hoveredTab READ hoveredTab NOTIFY hoveredTabChanged)
    Q_PROPERTY(bool hoveringTabs READ hoveringTabs WRITE setHoveringTabs NOTIFY hoveringTabsChanged)
    Q_PROPERTY(bool showBubble READ showBubble NOTIFY showBubbleChanged)
    Q_PROPERTY(bool showPresetMenu READ showPresetMenu WRITE setShowPresetMenu NOTIFY
                   showPresetMenuChanged)
    Q_PROPERTY(QString presetName READ presetName NOTIFY presetNameChanged)
    Q_PROPERTY(QStringList presetNames READ presetNames NOTIFY presetNamesChanged)
    Q_PROPERTY(QString activePreset READ activePreset NOTIFY activePresetChanged)
    Q_PROPERTY(QStringList chips READ chips NOTIFY chipsChanged)
    Q_PROPERTY(QString lastError READ lastError NOTIFY lastErrorChanged)
    Q_PROPERTY(int scanCount READ scanCount NOTIFY scanCountChanged)
    Q_PROPERTY(bool showAdvanced READ showAdvanced NOTIFY showAdvancedChanged)
    Q_PROPERTY(bool showScans READ showScans NOTIFY showScansChanged)

public:
    /// How long a click holds the bubble open at least.
    static constexpr std::chrono::milliseconds bubbleTime{1800};

    explicit BaseWidget(QObject *parent = nullptr);

    [[nodiscard]] AppModel *model() const { return m_model; }
    /// The model must outlive this, or go with the program.
    void setModel(AppModel *model);

    /// The tabs shown; "Preset" only when there are presets.
    [[nodiscard]] const QStringList &tabItems() const { return m_tabItems; }
    /// The tab in force: "Preset" exactly while a preset of the user's is.
    [[nodiscard]] const QString &tab() const { return m_tab; }
    /// The tab whose settings the bubble shows: the hovered one, else the one in force.
    [[nodiscard]] const QString &displayTab() const { return m_displayTab; }
    [[nodiscard]] const QString &hoveredTab() const { return m_hoveredTab; }
    /// Whether the pointer is over the tab bar.
    [[nodiscard]] bool hoveringTabs() const { return m_hoveringTabs; }
    void setHoveringTabs(bool hovering);
    /// Whether the bubble is held open after a click.
    [[nodiscard]] bool bubbleFlash() const { return m_bubbleHide.isActive(); }
    [[nodiscard]] bool showBubble() const { return m_showBubble; }
    [[nodiscard]] bool showPresetMenu() const { return m_showPresetMenu; }
    void setShowPresetMenu(bool show);
    /// What stands on the "Preset" tab.
    [[nodiscard]] const QString &presetName() const { return m_presetName; }
    /// The user's presets, in saved order. No two have one name.
    [[nodiscard]] const QStringList &presetNames() const { return m_presetNames; }
    /// The name of the user's preset in force; empty if none is.
    [[nodiscard]] const QString &activePreset() const { return m_activePreset; }
    /// What the bubble says of `displayTab`.
    [[nodiscard]] const QStringList &chips() const { return m_chips; }
    /// The last failure of the engine; empty if there is none.
    [[nodiscard]] const QString &lastError() const { return m_lastError; }
    /// How many scans the folder holds.
    [[nodiscard]] int scanCount() const { return m_scanCount; }
    [[nodiscard]] bool showAdvanced() const { return m_showAdvanced; }
    [[nodiscard]] bool showScans() const { return m_showScans; }

    /// The title of a tab in the user's language.
    Q_INVOKABLE QString tabLabel(const QString &tab) const;

public Q_SLOTS:
    /// The pointer came over a tab, or left it. Leaving one that another has replaced does nothing.
    void enterTab(const QString &tab);
    void leaveTab(const QString &tab);
    /// Puts a tab in force with its defaults and flashes the bubble.
    void clickTab(const QString &tab);
    /// Applies the preset in force again, or else the first of the list.
    void activatePreset();
    /// Opens the bubble for `bubbleTime` from now.
    void flashBubble();
    /// What a row of the menu does: closes the menu and applies the preset.
    void choosePreset(const QString &name);
    /// Deletes a preset; the menu closes with the last one.
    void deletePreset(const QString &name);
    void openSettings();
    void toggleAdvanced();
    void toggleScans();

Q_SIGNALS:
    void modelChanged();
    void tabItemsChanged();
    void tabChanged();
    void displayTabChanged();
    void hoveredTabChanged();
    void hoveringTabsChanged();
    void showBubbleChanged();
    void showPresetMenuChanged();
    void presetNameChanged();
    void presetNamesChanged();
    void activePresetChanged();
    void chipsChanged();
    void lastErrorChanged();
    void scanCountChanged();
    void showAdvancedChanged();
    void showScansChanged();

private:
    void refreshTabs();
    void refreshBubble();
    void refreshBar();
    [[nodiscard]] std::optional<ScanPreset> preset(const QString &name) const;

    QPointer<AppModel> m_model;
    QStringList m_tabItems;
    QString m_tab;
    QString m_displayTab;
    QString m_hoveredTab;
    bool m_hoveringTabs = false;
    bool m_showBubble = false;
    bool m_showPresetMenu = false;
    QString m_presetName;
    QStringList m_presetNames;
    QString m_activePreset;
    QStringList m_chips;
    QString m_lastError;
    int m_scanCount = 0;
    bool m_showAdvanced = false;
    bool m_showScans = false;
    QTimer m_bubbleHide{this}; ///< Runs while `bubbleFlash`.
};

} // namespace velmor
