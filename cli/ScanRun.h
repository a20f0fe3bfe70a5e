#pragma once

#include "cli/DeviceSearch.h"
#include "cli/StatusDisplay.h"

namespace velmor {

/// One scan from start to end: the engine, the search for scanners, the job, the PDF.
///
/// Shows what goes on at standard error and prints the PDF's path, once it is saved, to standard
/// output. Needs an event loop.
class ScanRun : public QObject {
    Q_OBJECT

public:
    explicit ScanRun(ScanRequest request, QObject *parent = nullptr);

    void start();

    /// Ends the job early: what was captured is saved.
    void interrupt();

Q_SIGNALS:
    /// Once, at the end.
    void finished(velmor::ExitCode code);

private:
    enum class Phase { searching, scanning, saving, over };

    [[nodiscard]] bool applyPreset(const QString &name);
    [[nodiscard]] QString folderPath() const;
    [[nodiscard]] bool canUseFolder() const;
    void scanWhenFound();
    void noteEndOfJob();
    void fail(ExitCode code, const QString &message);
    void end(const ScanOutcome &outcome);
    void endSaved(const ScanOutcome &outcome);
    void handleLostEngine(const QString &reason);
    void finish(ExitCode code);

    ScanRequest m_request;
    Phase m_phase = Phase::searching;
    StatusDisplay m_display;
    QString m_engineText; ///< The engine's latest word for the status line.
    AppModel m_model;
    DeviceSearch m_search;
};

} // namespace velmor
