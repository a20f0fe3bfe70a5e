#pragma once

#include "engine/ScanEngineClient.h"
#include "model/Models.h"
#include "model/ScanPreset.h"
#include "model/UnansweredJobs.h"
#include "pipeline/VisionOCR.h"

#include <QCoroTask>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QSettings>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

namespace velmor {

/// How far the making of a PDF has come.
struct AssemblyProgress {
    int done = 0; ///< Pages.
    int total = 0;

    bool operator==(const AssemblyProgress &) const = default;
};

/// How a scan job came to its end.
struct ScanOutcome {
    enum class Kind {
        saved,          ///< `file` is the PDF; `message` says why it has no text, if it should.
        nothingScanned, ///< The engine captured no page.
        failed,         ///< The engine gave up, for the reason `message`.
        notSaved        ///< There is no PDF; the pages are the image files `pageImages`.
    };

    Kind kind;
    QUrl file = {};
    QStringList pageImages = {};
    QString message = {};
};

/// What the status line says of a saved scan.
[[nodiscard]] QString savedText(int pages);

/// The one observable object of the application: all state that more than one screen needs, the
/// engine that scans, and the operations that the screens call.
///
/// Lives on the main thread and is used there alone. Nothing here throws or blocks for longer than
/// a file operation takes. Every `...Changed` signal comes after each assignment of its field, also
/// of an equal value.
class AppModel : public QObject {
    Q_OBJECT

public:
    /// How long short-lived signs stay, and how long a preview of calibration waits for the next
    /// change.
    struct Delays {
        std::chrono::milliseconds toast{4000};
        std::chrono::milliseconds success{2200};
        std::chrono::milliseconds adjust{120};
    };

    /// Selects the "Document" defaults and goes back to the folder that was chosen last. The
    /// engine isn't started.
    explicit AppModel(QObject *parent = nullptr) : AppModel(Delays(), parent) {}
    explicit AppModel(Delays delays, QObject *parent = nullptr);
    /// Stops the engine; see `ScanEngineClient`.
    ~AppModel() override;

    // --- State -------------------------------------------------------------------------------

    /// The working settings of all screens.
    [[nodiscard]] const ScanSettings &settings() const { return m_settings; }
    void setSettings(const ScanSettings &settings);
    /// The selected tab.
    [[nodiscard]] DocumentType selectedPreset() const { return m_selectedPreset; }
    /// The scanners of the last search.
    [[nodiscard]] const QList<EngineEvent::Device> &devices() const { return m_devices; }
    /// The scanner to use; kept also while it isn't among `devices`.
    [[nodiscard]] const std::optional<QString> &selectedDeviceId() const
    {
        return m_selectedDeviceId;
    }
    void setSelectedDeviceId(const std::optional<QString> &id);
    /// Whether a job runs in the engine. Making the PDF comes after that.
    [[nodiscard]] bool isScanning() const { return m_isScanning; }
    [[nodiscard]] const QString &statusText() const { return m_statusText; }
    /// The PDFs of the output folder, newest first.
    [[nodiscard]] const QList<ScanResult> &results() const { return m_results; }
    [[nodiscard]] bool showAdvanced() const { return m_showAdvanced; }
    void setShowAdvanced(bool show);
    [[nodiscard]] bool showScans() const { return m_showScans; }
    void setShowScans(bool show);
    [[nodiscard]] bool showCalibration() const { return m_showCalibration; }
    void setShowCalibration(bool show);
    /// The user's presets, in saved order.
    [[nodiscard]] const QList<ScanPreset> &presets() const { return m_presets; }
    /// The user preset in force, if there is one.
    [[nodiscard]] const std::optional<ScanPreset> &activeCustomPreset() const
    {
        return m_activeCustomPreset;
    }
    /// The levels that were applied last in the editor; not part of any preset, and not stored.
    [[nodiscard]] const std::optional<MagicSettings> &magicPreset() const { return m_magicPreset; }
    void setMagicPreset(const std::optional<MagicSettings> &levels);
    /// The scans whose last edit can be undone.
    [[nodiscard]] const QSet<QUrl> &undoableFiles() const { return m_undoableFiles; }
    /// Whether a search for scanners is in progress.
    [[nodiscard]] bool searching() const { return m_searching; }
    /// The message on screen, if there is one.
    [[nodiscard]] const std::optional<QString> &toast() const { return m_toast; }
    /// The page count of the success flash, while it lasts.
    [[nodiscard]] std::optional<int> successCount() const { return m_successCount; }
    /// The last failure of the engine.
    [[nodiscard]] const std::optional<QString> &lastError() const { return m_lastError; }
    /// The preview of calibration; absent before the first of a sample, and of a folder.
    [[nodiscard]] const std::optional<QImage> &calibrationImage() const
    {
        return m_calibrationImage;
    }
    /// Counts the calibration samples.
    [[nodiscard]] int calibrationSampleVersion() const { return m_calibrationSampleVersion; }
    /// Whether calibration was finished once, in this run or an earlier one.
    [[nodiscard]] bool hasCalibrated() const { return m_hasCalibrated; }
    /// The PDF in the making, of several the one that moved last; absent when there is none.
    [[nodiscard]] std::optional<AssemblyProgress> assemblyProgress() const
    {
        return m_assemblyProgress;
    }
    /// Whether the engine was launched. Its death doesn't change that.
    [[nodiscard]] bool engineRunning() const { return m_engineRunning; }

    /// What the connection to the scanner has to say in one line.
    [[nodiscard]] QString connectionLine() const;
    [[nodiscard]] bool canScan() const;

    // --- Engine ------------------------------------------------------------------------------

    /// Launches the engine and asks it for scanners. Not while it runs.
    void startEngine();
    void stopEngine();
    /// Searches again, and launches the engine if that failed before.
    void refreshDevices();

    // --- Scan job ----------------------------------------------------------------------------

    /// What the scan button does: scan, stop the running job, or search when there is no scanner.
    void primaryScan();
    /// Starts a job. Does nothing unless `canScan`.
    void scan();
    /// Asks the engine to end its job, which closes it in its own time.
    void cancel();

    // --- Calibration -------------------------------------------------------------------------

    /// Where the engine leaves the sample, in the output folder.
    [[nodiscard]] QUrl rawCalibrationPath() const;
    /// Whether a sample is there, perhaps from an earlier run.
    [[nodiscard]] bool hasCalibrationSample() const;
    /// Has one sheet captured as the sample. Without a scanner it searches for one instead.
    void startCalibration();
    /// Whether a sample that was asked for is still to come.
    [[nodiscard]] bool isCalibrating() const;
    /// Asks for a preview of the sample with the settings as they are now. It is sent a moment
    /// later, unless another call takes its place. Does nothing without a sample.
    void adjustPreview();
    void finishCalibration();

    // --- Tabs and messages -------------------------------------------------------------------

    /// Whether a preset takes the output folder along.
    enum class PresetFolder { leaveOut, include };

    /// Selects a built-in tab and sets its defaults. No user preset is in force then.
    void selectPreset(DocumentType type);
    /// Reads the stored presets; what can't be read changes nothing.
    void loadPresets();
    /// Stores the current settings under `name`, in place of a preset of that name, and puts the
    /// new preset in force. Blanks around the name don't count; nothing happens if it is empty.
    void saveCurrentAsPreset(const QString &name, PresetFolder folder = PresetFolder::leaveOut);
    /// Deletes the presets of this name. If one was in force, the tab's defaults come back.
    void deletePreset(const ScanPreset &preset);
    /// Puts a preset in force, with its folder if that is still there.
    void applyPreset(const ScanPreset &preset);
    /// The settings that a tab, "Document", "Photo" or "Preset", would set.
    [[nodiscard]] ScanSettings previewSettings(const QString &tab) const;
    /// Whether the settings that a tab or preset decides have been changed by hand.
    [[nodiscard]] bool isModifiedFromDefaults() const;
    /// Shows `message` for some seconds, in place of the one before.
    void flash(const QString &message);

    // --- Output folder -----------------------------------------------------------------------

    /// Makes `folder` the current folder, for good.
    void setOutputFolder(const QUrl &folder);
    /// Reads `results` anew; all its records are new ones.
    void loadResults();
    /// Saves `document` at `url` over any file there: as a whole, or not at all. False on failure.
    [[nodiscard]] bool write(const PdfDocument &document, const QUrl &url);

    // --- Undo --------------------------------------------------------------------------------

    /// `write`, after a copy of the old file has been put aside for `undoEdit`. One copy a scan:
    /// the former one goes, also when the write fails. Where no copy can be made, the scan is
    /// written all the same and can't be undone.
    [[nodiscard]] bool writeWithBackup(const PdfDocument &document, const QUrl &url);
    /// Puts the copy back. False if there is none, or if it can't be put back; it is kept then.
    [[nodiscard]] bool undoEdit(const QUrl &url);
    /// Removes the copy, if there is one: another document stands there now.
    void forgetBackup(const QUrl &url);
    /// The scan at `from` is at `to` now, and its copy and date belong to it there.
    void followRename(const QUrl &from, const QUrl &to);

Q_SIGNALS:
    void settingsChanged();
    void selectedPresetChanged();
    void devicesChanged();
    void selectedDeviceIdChanged();
    void isScanningChanged();
    void statusTextChanged();
    void resultsChanged();
    void showAdvancedChanged();
    void showScansChanged();
    void showCalibrationChanged();
    void searchingChanged();
    void toastChanged();
    void successCountChanged();
    void lastErrorChanged();
    void calibrationImageChanged();
    void calibrationSampleVersionChanged();
    void hasCalibratedChanged();
    void assemblyProgressChanged();
    void presetsChanged();
    void activeCustomPresetChanged();
    void magicPresetChanged();
    void undoableFilesChanged();

    /// The engine sent a text for the status line, which shows it already.
    void engineSpoke(const QString &text);
    /// A job is over, and its PDF is saved or given up. The state says so already. An engine that
    /// fails or finishes without a job ends none.
    void scanEnded(const velmor::ScanOutcome &outcome);
    /// The engine couldn't be launched, or ended by itself, which no state tells.
    void engineLost(const QString &reason);

private:
    // AppModel.cpp: the engine and its events
    void handle(const EngineEvent &event);
    void handleDevices(const EngineEvent &event);
    void handleDone(const EngineEvent &event);
    void handleError(const EngineEvent &event);
    void engineNotLaunched(const QString &reason);
    void send(const EngineCommand &command);
    void flashSuccess(int pages);

    // AppModelScan.cpp
    [[nodiscard]] QString nextOutputPath() const;
    [[nodiscard]] EngineCommand captureCommand(const QString &word) const;
    [[nodiscard]] EngineCommand scanCommand() const;
    void assembleScan(const QStringList &pageImages, const QString &file, int pages);
    QCoro::Task<> assemble(QStringList pageImages, QUrl url, int pages, double dpi, bool ocr);
    void finishScan(const QStringList &pageImages, const QUrl &url, int pages,
                    const QString &message);
    void giveUpScan(const QStringList &pageImages);
    void runVisionOcr(const QUrl &url, int pages);
    QCoro::Task<> recognizeSaved(QUrl url, int pages, double dpi);
    [[nodiscard]] VisionOCR::Progress beginAssembly();
    void endAssembly();
    [[nodiscard]] QString told(const std::optional<QString> &recognitionProblem);

    // AppModelCalibration.cpp
    void loadHasCalibrated();
    void handleSample();
    void handleAdjusted(const EngineEvent &event);
    void forgetPreview();
    QCoro::Task<> showPreviews();

    // AppModelFolder.cpp
    void restoreFolderAccess();
    void ensureOutputFolder() const;
    [[nodiscard]] QDateTime dateOf(const QUrl &url) const;
    [[nodiscard]] bool replaceFile(const QUrl &url,
                                   const std::function<bool(QIODevice &)> &writeContent);

    // AppModelPresets.cpp
    void storePresets(const QList<ScanPreset> &presets);

    template <typename Field, typename Value>
    void assign(Field &field, Value &&value, void (AppModel::*changed)())
    {
        field = std::forward<Value>(value);
        Q_EMIT(this->*changed)();
    }
    void setStatusText(const QString &text);
    void setIsScanning(bool scanning);
    void setSearching(bool searching);

    ScanSettings m_settings;
    DocumentType m_selectedPreset = DocumentType::document;
    QList<EngineEvent::Device> m_devices;
    std::optional<QString> m_selectedDeviceId;
    bool m_isScanning = false;
    QString m_statusText;
    QList<ScanResult> m_results;
    bool m_showAdvanced = false;
    bool m_showScans = false;
    bool m_showCalibration = false;
    bool m_searching = false;
    std::optional<QString> m_toast;
    std::optional<int> m_successCount;
    std::optional<QString> m_lastError;
    QList<ScanPreset> m_presets;
    std::optional<ScanPreset> m_activeCustomPreset;
    std::optional<MagicSettings> m_magicPreset;
    QHash<QUrl, QString> m_undoBackups; ///< Path of the copy. Has the keys of `m_undoableFiles`.
    QSet<QUrl> m_undoableFiles;
    QHash<QUrl, QDateTime> m_rememberedDates; ///< Of scans whose files can't carry theirs.
    std::optional<QImage> m_calibrationImage;
    int m_calibrationSampleVersion = 0;
    std::optional<QUrl> m_previewToShow; ///< The newest that hasn't been decoded yet.
    bool m_isShowingPreviews = false;
    bool m_hasCalibrated = false;
    std::optional<AssemblyProgress> m_assemblyProgress;
    int m_assemblies = 0; ///< How many are under way.
    bool m_toldRecognitionProblem = false;
    bool m_engineRunning = false;
    int m_activeScanDpi = 300; ///< Of the job under way.
    QTimer m_toastClear;
    QTimer m_successClear;
    QTimer m_adjustWork;           ///< Runs while a preview is to be asked for,
    EngineCommand m_adjustCommand; ///< which this does.
    QSettings m_store;
    ScanEngineClient m_engine;
    UnansweredJobs m_jobs;
};

} // namespace velmor
