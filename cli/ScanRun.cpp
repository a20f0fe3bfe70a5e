#include "cli/ScanRun.h"

#include "cli/TerminalText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace velmor {

ScanRun::ScanRun(ScanRequest request, QObject *parent)
    : QObject(parent), m_request(std::move(request))
{
    connect(&m_model, &AppModel::statusTextChanged, this, [this] {
        if (m_phase != Phase::over)
            m_display.showStatus(m_model.statusText());
    });
    connect(&m_model, &AppModel::assemblyProgressChanged, this, [this] {
        if (const auto progress = m_model.assemblyProgress())
            m_display.showProgress(progress->done, progress->total);
    });
    connect(&m_model, &AppModel::isScanningChanged, this, &ScanRun::noteEndOfJob);
    connect(&m_model, &AppModel::devicesChanged, this, &ScanRun::scanWhenFound,
            Qt::QueuedConnection);
    connect(&m_model, &AppModel::scanEnded, this, &ScanRun::end);
    connect(&m_model, &AppModel::engineLost, this, &ScanRun::handleLostEngine);

    m_searchLimit.setSingleShot(true);
    m_searchLimit.setInterval(m_request.searchLimit.value);
    connect(&m_searchLimit, &QTimer::timeout, this, [this] {
        fail(ExitCode::engineFailed,
             QStringLiteral("The scanner engine didn't answer within %1 seconds.")
                 .arg(m_request.searchLimit.value.count()));
    });
}

void ScanRun::start()
{
    m_model.selectPreset(m_request.tab);
    m_model.setSettings(m_request.appliedTo(m_model.settings()));
    if (m_request.deviceId)
        m_model.setSelectedDeviceId(m_request.deviceId);
    if (!canUseFolder()) {
        fail(ExitCode::notSaved, QStringLiteral("Scans can't be saved in %1. Nothing was scanned.")
                                     .arg(m_model.settings().outputFolder.toLocalFile()));
        return;
    }
    m_searchLimit.start();
    m_model.startEngine();
}

/// Better told before the paper moves than after.
bool ScanRun::canUseFolder() const
{
    const QString path = m_model.settings().outputFolder.toLocalFile();
    QDir().mkpath(path);
    const QFileInfo folder(path);
    return folder.isDir() && folder.isWritable();
}

void ScanRun::interrupt()
{
    switch (m_phase) {
    case Phase::searching:
        fail(ExitCode::nothingScanned, QStringLiteral("Nothing scanned"));
        break;
    case Phase::scanning:
        m_display.printMessage(QStringLiteral("Ending the scan. Ctrl-C again gives up."));
        m_model.cancel();
        break;
    case Phase::saving:
        m_display.printMessage(
            QStringLiteral("The pages are being saved. Ctrl-C again gives up the PDF."));
        break;
    case Phase::over:
        break;
    }
}

void ScanRun::scanWhenFound()
{
    if (m_phase != Phase::searching)
        return;
    m_searchLimit.stop();
    const auto &devices = m_model.devices();
    if (devices.isEmpty()) {
        fail(ExitCode::noScanner, QStringLiteral("No scanner found"));
        return;
    }
    const bool isKnown = std::ranges::any_of(
        devices, [&](const auto &device) { return device.id == m_model.selectedDeviceId(); });
    if (!isKnown) {
        fail(ExitCode::noScanner, QStringLiteral("There is no scanner “%1”. See “velmor devices”.")
                                      .arg(m_model.selectedDeviceId().value_or(QString())));
        return;
    }
    m_phase = Phase::scanning;
    m_model.scan();
}

void ScanRun::noteEndOfJob()
{
    if (m_phase != Phase::scanning || m_model.isScanning())
        return;
    m_phase = Phase::saving;
    // The engine's last word tells why the job ended early, if it did, and would pass unseen.
    const QString &text = m_model.statusText();
    const bool isRoutine = text == u"Scanning…" || text == u"Waiting for paper…" ||
                           text.startsWith(QLatin1String("Captured page "));
    if (!isRoutine)
        m_display.printMessage(text);
}

void ScanRun::end(const ScanOutcome &outcome)
{
    switch (outcome.kind) {
    case ScanOutcome::Kind::saved:
        m_display.closeLine();
        if (!outcome.message.isEmpty())
            m_display.printMessage(outcome.message);
        finish(ExitCode::success);
        printLine(QFile::encodeName(outcome.file.toLocalFile()));
        break;
    case ScanOutcome::Kind::nothingScanned:
        fail(ExitCode::nothingScanned, m_model.statusText());
        break;
    case ScanOutcome::Kind::failed:
        fail(ExitCode::engineFailed, outcome.message);
        break;
    case ScanOutcome::Kind::notSaved:
        m_display.printMessage(QStringLiteral("Couldn't save the PDF. The page images are kept:"));
        for (const QString &path : outcome.pageImages)
            printErrorLine("  " + terminalText(path));
        finish(ExitCode::notSaved);
        break;
    }
}

void ScanRun::handleLostEngine(const QString &reason)
{
    switch (m_phase) {
    case Phase::searching:
        fail(ExitCode::engineFailed, QStringLiteral("Engine: ") + reason);
        break;
    case Phase::scanning:
        fail(ExitCode::engineFailed,
             QStringLiteral("Engine: %1 Pages it captured are in %2.")
                 .arg(reason, m_model.settings().outputFolder.toLocalFile()));
        break;
    case Phase::saving: // All pages are here, and the engine isn't needed any more.
    case Phase::over:
        break;
    }
}

void ScanRun::fail(ExitCode code, const QString &message)
{
    if (m_phase == Phase::over)
        return;
    m_display.printMessage(message);
    finish(code);
}

void ScanRun::finish(ExitCode code)
{
    m_phase = Phase::over;
    m_searchLimit.stop();
    Q_EMIT finished(code);
}

} // namespace velmor
