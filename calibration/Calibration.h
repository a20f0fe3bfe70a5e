#pragma once

#include "calibration/SliderScale.h"
#include "model/AppModel.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace velmor {

/// The state of the screen that tunes brightness and contrast on a sample page, and its rules.
///
/// The settings are the model's own, and a change of one asks for a new preview of the sample; one
/// of the colour mode for a new sample, as the old one holds the old mode. Images are decoded in
/// the background. Made for one showing of the screen, and gone with it. Main thread.
class Calibration : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("It is made with the model.")
    Q_PROPERTY(bool hasSample READ hasSample NOTIFY hasSampleChanged)
    Q_PROPERTY(bool hasResult READ hasResult NOTIFY resultChanged)

    Q_PROPERTY(QStringList colorModeTitles READ colorModeTitles CONSTANT)
    Q_PROPERTY(int colorMode READ colorMode WRITE setColorMode NOTIFY settingsChanged)
    Q_PROPERTY(double brightness READ brightness WRITE setBrightness NOTIFY settingsChanged)
    Q_PROPERTY(double contrast READ contrast WRITE setContrast NOTIFY settingsChanged)

    Q_PROPERTY(QString presetName READ presetName WRITE setPresetName NOTIFY presetNameChanged)
    Q_PROPERTY(bool canSavePreset READ canSavePreset NOTIFY presetNameChanged)
    Q_PROPERTY(QStringList presetNames READ presetNames NOTIFY presetNamesChanged)

    Q_PROPERTY(bool isBusy READ isBusy NOTIFY noteChanged)
    Q_PROPERTY(bool hasFailed READ hasFailed NOTIFY noteChanged)
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)
    Q_PROPERTY(QString news READ news NOTIFY newsChanged)

public:
    /// The model outlives this.
    explicit Calibration(AppModel &model, QObject *parent = nullptr);

    // --- Sample ------------------------------------------------------------------------------

    /// Whether the output folder holds a sample, as far as is known.
    [[nodiscard]] bool hasSample() const { return m_hasSample; }
    /// The sample as loaded.
    [[nodiscard]] const std::optional<QImage> &original() const { return m_original; }
    /// What becomes of it with the settings.
    [[nodiscard]] const std::optional<QImage> &result() const { return m_model.calibrationImage(); }
    [[nodiscard]] bool hasResult() const { return result().has_value(); }
    /// Reads the sample again, in the background. Without one the last stays.
    void loadOriginal();

    // --- Settings, brightness and contrast as positions of a slider --------------------------

    /// The colour modes by name; the setting is an index into these.
    [[nodiscard]] static QStringList colorModeTitles();
    [[nodiscard]] int colorMode() const;
    void setColorMode(int index);
    [[nodiscard]] double brightness() const { return SliderScale::position(m_seen.brightness); }
    void setBrightness(double position);
    [[nodiscard]] double contrast() const { return SliderScale::position(m_seen.contrast); }
    void setContrast(double position);
    /// The number beside a slider at `position`.
    Q_INVOKABLE [[nodiscard]] static int readout(double position)
    {
        return SliderScale::readout(position);
    }

    // --- Presets -----------------------------------------------------------------------------

    /// The name for a new preset, as typed.
    [[nodiscard]] const QString &presetName() const { return m_presetName; }
    void setPresetName(const QString &name);
    [[nodiscard]] bool canSavePreset() const { return !storedPresetName(m_presetName).isEmpty(); }
    [[nodiscard]] const QStringList &presetNames() const { return m_presetNames; }

    // --- What goes on ------------------------------------------------------------------------

    /// Whether the scanner, or the search for one, is waited for.
    [[nodiscard]] bool isBusy() const;
    /// Whether `note` tells of a failure of this calibration.
    [[nodiscard]] bool hasFailed() const { return !isBusy() && !m_failure.isEmpty(); }
    /// What there is to say beside the pictures; empty if there is nothing.
    [[nodiscard]] QString note() const;
    /// The last thing that happened, in words, for those who don't see it.
    [[nodiscard]] const QString &news() const { return m_news; }

public Q_SLOTS:
    /// The screen is there now. Has a sample made if there is none.
    void open();
    /// Has a new sample made, once the scanner is found and free.
    void scanSample();
    /// Sets brightness and contrast by the sample. Nothing changes without a readable one.
    void autoTune();
    /// Saves the settings under `presetName` and empties that.
    void savePreset();
    /// Puts the preset at a place of `presetNames` in force.
    void applyPreset(int place);
    /// Closes the screen, and stops the scan for it if that still runs.
    void finish();

Q_SIGNALS:
    void hasSampleChanged();
    void originalChanged();
    void resultChanged();
    void settingsChanged();
    void presetNameChanged();
    void presetNamesChanged();
    void noteChanged();
    void newsChanged();

private:
    void connectModel();
    void followSettings();
    void react();
    void followSample();
    void followResult();
    void followFailure();
    void lookForSample();
    void captureSample();
    void captureWantedSample();
    void listPresets();
    void tell(const QString &news);
    void setFailure(const QString &failure);
    QCoro::Task<> loadNewestOriginal();
    QCoro::Task<> tune(QUrl sample);

    AppModel &m_model;
    ScanSettings m_seen;      ///< The model's.
    ScanSettings m_reactedTo; ///< What they were at the last reaction.
    bool m_reactionDue = false;
    bool m_hasSample = false;
    std::optional<QImage> m_original;
    std::optional<QUrl> m_originalToLoad; ///< The newest that isn't being decoded yet.
    bool m_isLoading = false;
    bool m_isTuning = false;
    bool m_wantsSample = false; ///< A scan waits for the scanner.
    QString m_failure;
    QString m_news;
    QString m_presetName;
    QStringList m_presetNames;
};

} // namespace velmor
