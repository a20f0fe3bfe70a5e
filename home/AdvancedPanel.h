#pragma once

#include "controls/ToggleState.h"
#include "model/AppModel.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// The last two parts of a folder's path, after "…/" if there are more.
[[nodiscard]] QString folderLabel(const QUrl &folder);

/// The state of the panel that shows all scan settings. They are the model's own: setting one
/// takes effect at once. Without a model it shows new settings, and setting one does nothing.
class AdvancedPanel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::AppModel *model READ model WRITE setModel NOTIFY modelChanged REQUIRED)

    Q_PROPERTY(QStringList qualityTitles READ qualityTitles CONSTANT)
    Q_PROPERTY(int quality READ quality WRITE setQuality NOTIFY settingsChanged)
    Q_PROPERTY(QStringList colorModeTitles READ colorModeTitles CONSTANT)
    Q_PROPERTY(int colorMode READ colorMode WRITE setColorMode NOTIFY settingsChanged)
    Q_PROPERTY(bool batch READ batch WRITE setBatch NOTIFY settingsChanged)
    Q_PROPERTY(bool cropEnabled READ cropEnabled WRITE setCropEnabled NOTIFY settingsChanged)
    Q_PROPERTY(bool deskewEnabled READ deskewEnabled WRITE setDeskewEnabled NOTIFY settingsChanged)
    Q_PROPERTY(bool cleanEnabled READ cleanEnabled WRITE setCleanEnabled NOTIFY settingsChanged)
    Q_PROPERTY(bool blankRemovalEnabled READ blankRemovalEnabled WRITE setBlankRemovalEnabled NOTIFY
                   settingsChanged)
    Q_PROPERTY(bool autoLevelsEnabled READ autoLevelsEnabled WRITE setAutoLevelsEnabled NOTIFY
                   settingsChanged)
    Q_PROPERTY(bool ocr READ ocr WRITE setOcr NOTIFY settingsChanged)
    Q_PROPERTY(int enhanceState READ enhanceStateValue NOTIFY settingsChanged)
    Q_PROPERTY(QString folderLabel READ folderLabel NOTIFY settingsChanged)
    Q_PROPERTY(QUrl folder READ folder NOTIFY settingsChanged)

    Q_PROPERTY(bool modified READ modified NOTIFY modifiedChanged)
    Q_PROPERTY(bool showFineTune MEMBER m_showFineTune NOTIFY showFineTuneChanged)
    Q_PROPERTY(bool showPresetSave MEMBER m_showPresetSave NOTIFY showPresetSaveChanged)
    Q_PROPERTY(QString presetName READ presetName WRITE setPresetName NOTIFY presetNameChanged)
    Q_PROPERTY(
        bool presetIncludesFolder MEMBER m_presetIncludesFolder NOTIFY presetIncludesFolderChanged)
    Q_PROPERTY(bool canSavePreset READ canSavePreset NOTIFY presetNameChanged)

public:
    using QObject::QObject;

    [[nodiscard]] AppModel *model() const { return m_model; }
    /// The model must outlive this, or go with the program.
    void setModel(AppModel *model);

    /// The qualities and colour modes by name; the settings are indexes into these.
    [[nodiscard]] static QStringList qualityTitles();
    [[nodiscard]] int quality() const;
    void setQuality(int index);
    [[nodiscard]] static QStringList colorModeTitles();
    [[nodiscard]] int colorMode() const;
    void setColorMode(int index);

    [[nodiscard]] bool batch() const { return m_settings.batch; }
    void setBatch(bool on) { set(&ScanSettings::batch, on); }
    [[nodiscard]] bool cropEnabled() const { return m_settings.cropEnabled; }
    void setCropEnabled(bool on) { set(&ScanSettings::cropEnabled, on); }
    [[nodiscard]] bool deskewEnabled() const { return m_settings.deskewEnabled; }
    void setDeskewEnabled(bool on) { set(&ScanSettings::deskewEnabled, on); }
    [[nodiscard]] bool cleanEnabled() const { return m_settings.cleanEnabled; }
    void setCleanEnabled(bool on) { set(&ScanSettings::cleanEnabled, on); }
    [[nodiscard]] bool blankRemovalEnabled() const { return m_settings.blankRemovalEnabled; }
    void setBlankRemovalEnabled(bool on) { set(&ScanSettings::blankRemovalEnabled, on); }
    [[nodiscard]] bool autoLevelsEnabled() const { return m_settings.autoLevelsEnabled; }
    void setAutoLevelsEnabled(bool on) { set(&ScanSettings::autoLevelsEnabled, on); }
    [[nodiscard]] bool ocr() const { return m_settings.ocr; }
    void setOcr(bool on) { set(&ScanSettings::ocr, on); }

    /// Of the five enhance steps.
    [[nodiscard]] ToggleState enhanceState() const;
    /// The same, as QML hands enumerators on.
    [[nodiscard]] int enhanceStateValue() const { return static_cast<int>(enhanceState()); }
    [[nodiscard]] QString folderLabel() const { return velmor::folderLabel(folder()); }
    /// Where scans go.
    [[nodiscard]] QUrl folder() const { return m_settings.outputFolder; }

    /// Whether there is anything that a new preset would keep.
    [[nodiscard]] bool modified() const { return m_modified; }
    /// The name in the save popover, as typed.
    [[nodiscard]] const QString &presetName() const { return m_presetName; }
    void setPresetName(const QString &name);
    [[nodiscard]] bool canSavePreset() const { return !storedPresetName(m_presetName).isEmpty(); }

public Q_SLOTS:
    /// Turns all five steps on, or off if all are on.
    void toggleAllEnhance();
    /// What the choice of a folder ends with. No folder of this computer changes nothing.
    void chooseFolder(const QUrl &folder);
    /// Opens the screen that tunes brightness and contrast.
    void calibrate();
    /// Saves the settings under `presetName` and closes the popover.
    void savePreset();

Q_SIGNALS:
    void modelChanged();
    void settingsChanged();
    void modifiedChanged();
    void showFineTuneChanged();
    void showPresetSaveChanged();
    void presetNameChanged();
    void presetIncludesFolderChanged();

private:
    void refresh();
    void apply(const ScanSettings &settings);
    template <typename Value> void set(Value ScanSettings::*field, Value value)
    {
        ScanSettings settings = m_settings;
        settings.*field = value;
        apply(settings);
    }

    QPointer<AppModel> m_model;
    ScanSettings m_settings; ///< The model's.
    bool m_modified = false;
    bool m_showFineTune = false;
    bool m_showPresetSave = false;
    QString m_presetName;
    bool m_presetIncludesFolder = false;
};

} // namespace velmor
