#include "cli/ScanRun.h"

#include "cli/TerminalText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace velmor {

ScanRun::ScanRun(ScanRequest request, QObject *parent)
    : QObject(parent), m_request(std::move(request)), m_search(m_model, m_request.searchLimit)
{
    connect(&m_model, &AppModel::statusTextChanged, this, [this] {
        if (m_phase != Phase::over)
            m_display.showStatus(m_model.statusText());
    });
    connect(&m_model, &AppModel::assemblyProgressChanged, this, [this] {
        if (const auto progress = m_model.assemblyProgress())
            m_display.showProgress(progress->done, progress->total);
    });
    connect(&m_search, &DeviceSearch::found, this, &ScanRun::scanWhenFound);
    connect(&m_search, &DeviceSearch::failed, this, &ScanRun::fail);
    connect(&m_model, &AppModel::engineSpoke, this,
            [this](const QString &text) { m_engineText = text; });
    connect(&m_model, &AppModel::isScanningChanged, this, &ScanRun::noteEndOfJob);
    connect(&m_model, &AppModel::scanEnded, this, &ScanRun::end);
    connect(&m_model, &AppModel::engineLost, this, &ScanRun::handleLostEngine);
}

void ScanRun::start()
{
    m_model.selectPreset(m_request.tab);
    if (m_request.preset && !applyPreset(*m_request.preset)) {
        fail(ExitCode::wrongUse, QStringLiteral("There is no preset “%1”. See “velmor presets”.")
                                     .arg(*m_request.preset));
        return;
    }
    m_model.setSettings(m_request.appliedTo(m_model.settings()));
    if (m_request.deviceId)
        m_model.setSelectedDeviceId(m_request.deviceId);
    if (!canUseFolder()) {
        fail(ExitCode::notSaved,
             QStringLiteral("Scans can't be saved in %1. Nothing was scanned.").arg(folderPath()));
        return;
    }
    m_search.start();
}

/// False if there is none of this name.
bool ScanRun::applyPreset(const QString &name)
{
    const QList<ScanPreset> presets = m_model.presets();
    const auto preset = std::ranges::find(presets, name, &ScanPreset::name);
    if (preset == presets.end())
        return false;
    m_model.applyPreset(*preset);
    return true;
}

QString ScanRun::folderPath() const
{
    return m_model.settings().outputFolder.toLocalFile();
}

/// Better told before the paper moves than after.
bool ScanRun::canUseFolder() const
{
    QDir().mkpath(folderPath());
    const QFileInfo folder(folderPath());
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
    const bool isKnown = std::ranges::any_of(m_model.devices(), [this](const auto &device) {
        return device.id == m_model.selectedDeviceId();
    });
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
    if (m_model.statusText() == m_engineText)
        m_display.printMessage(m_engineText);
}

void ScanRun::end(const ScanOutcome &outcome)
{
    if (m_phase == Phase::over)
        return;
    switch (outcome.kind) {
    case ScanOutcome::Kind::saved:
        endSaved(outcome);
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

void ScanRun::endSaved(const ScanOutcome &outcome)
{
    const QString path = outcome.file.toLocalFile();
    // An engine may say that it made the file itself.
    if (!QFileInfo(path).isFile()) {
        fail(ExitCode::notSaved,
             QStringLiteral("The scanner engine left no PDF. Pages it captured are in %1.")
                 .arg(folderPath()));
        return;
    }
    m_display.closeLine();
    if (!outcome.message.isEmpty())
        m_display.printMessage(outcome.message);
    if (!printLine(QFile::encodeName(path)))
        m_display.printMessage(QStringLiteral("The path couldn't be printed: %1").arg(path));
    finish(ExitCode::success);
}

void ScanRun::handleLostEngine(const QString &reason)
{
    // While searching, the search tells; once all pages are here, the engine isn't needed.
    if (m_phase == Phase::scanning)
        fail(ExitCode::engineFailed,
             QStringLiteral("Engine: %1 Pages it captured are in %2.").arg(reason, folderPath()));
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
    m_search.giveUp();
    Q_EMIT finished(code);
}

} // namespace velmor
