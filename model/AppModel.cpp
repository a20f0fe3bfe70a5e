#include "model/AppModel.h"

namespace velmor {

namespace {

// Functions, as the language is known only when the program runs.

QString readyText()
{
    return AppModel::tr("Ready to scan");
}

QString noScannerText()
{
    return AppModel::tr("No scanner found");
}

QString searchingText()
{
    return AppModel::tr("Looking for scanners…");
}

} // namespace

QString savedText(int pages)
{
    return pages == 1 ? AppModel::tr("Saved 1 page")
                      : AppModel::tr("Saved %n pages", nullptr, pages);
}

AppModel::AppModel(Delays delays, QObject *parent)
    : QObject(parent), m_statusText(readyText()),
      m_store(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Velmor"),
              QStringLiteral("Velmor"))
{
    m_toastClear.setSingleShot(true);
    m_toastClear.setInterval(delays.toast);
    connect(&m_toastClear, &QTimer::timeout, this,
            [this] { assign(m_toast, std::nullopt, &AppModel::toastChanged); });
    m_successClear.setSingleShot(true);
    m_successClear.setInterval(delays.success);
    connect(&m_successClear, &QTimer::timeout, this,
            [this] { assign(m_successCount, std::nullopt, &AppModel::successCountChanged); });

    m_adjustWork.setSingleShot(true);
    m_adjustWork.setInterval(delays.adjust);
    connect(&m_adjustWork, &QTimer::timeout, this, [this] { send(m_adjustCommand); });

    connect(&m_engine, &ScanEngineClient::eventReceived, this, &AppModel::handle);
    connect(&m_engine, &ScanEngineClient::launchFailed, this, &AppModel::engineNotLaunched);
    connect(&m_engine, &ScanEngineClient::ended, this,
            [this] { Q_EMIT engineLost(tr("The scanner engine ended unexpectedly.")); });

    selectPreset(m_selectedPreset);
    restoreFolderAccess();
    loadPresets();
    loadHasCalibrated();
}

AppModel::~AppModel() = default;

void AppModel::setSettings(const ScanSettings &settings)
{
    const bool isElsewhere = settings.outputFolder != m_settings.outputFolder;
    assign(m_settings, settings, &AppModel::settingsChanged);
    if (isElsewhere)
        forgetPreview();
}

void AppModel::setSelectedDeviceId(const std::optional<QString> &id)
{
    assign(m_selectedDeviceId, id, &AppModel::selectedDeviceIdChanged);
}

void AppModel::setMagicPreset(const std::optional<MagicSettings> &levels)
{
    assign(m_magicPreset, levels, &AppModel::magicPresetChanged);
}

void AppModel::setShowAdvanced(bool show)
{
    assign(m_showAdvanced, show, &AppModel::showAdvancedChanged);
}

void AppModel::setShowScans(bool show)
{
    assign(m_showScans, show, &AppModel::showScansChanged);
}

void AppModel::setShowCalibration(bool show)
{
    assign(m_showCalibration, show, &AppModel::showCalibrationChanged);
}

void AppModel::setStatusText(const QString &text)
{
    assign(m_statusText, text, &AppModel::statusTextChanged);
}

void AppModel::setIsScanning(bool scanning)
{
    assign(m_isScanning, scanning, &AppModel::isScanningChanged);
}

void AppModel::setSearching(bool searching)
{
    assign(m_searching, searching, &AppModel::searchingChanged);
}

QString AppModel::connectionLine() const
{
    if (m_isScanning || m_searching)
        return m_statusText;
    if (!m_devices.isEmpty())
        return tr("%1 connected").arg(m_devices.first().name);
    if (m_statusText == readyText() || m_statusText == noScannerText())
        return {};
    return m_statusText;
}

void AppModel::startEngine()
{
    ensureOutputFolder();
    loadResults();
    setSearching(true);
    setStatusText(searchingText());
    if (const std::optional<QString> reason = m_engine.start()) {
        engineNotLaunched(*reason);
        return;
    }
    m_engineRunning = true;
    m_engine.send({.cmd = QStringLiteral("listDevices")});
}

void AppModel::engineNotLaunched(const QString &reason)
{
    m_engineRunning = false;
    setSearching(false);
    setStatusText(tr("Engine: %1").arg(reason));
    Q_EMIT engineLost(reason);
}

void AppModel::stopEngine()
{
    if (m_engineRunning)
        m_engine.stop();
}

void AppModel::refreshDevices()
{
    if (!m_engineRunning) {
        startEngine();
        return;
    }
    setSearching(true);
    setStatusText(searchingText());
    m_engine.send({.cmd = QStringLiteral("listDevices")});
}

void AppModel::send(const EngineCommand &command)
{
    m_jobs.noteSent(command);
    m_engine.send(command);
}

void AppModel::handle(const EngineEvent &event)
{
    m_jobs.noteEvent(event);
    const QString &word = event.event;
    if (word == u"ready") {
        setStatusText(readyText());
    } else if (word == u"devices") {
        handleDevices(event);
    } else if (word == u"scanStarted") {
        setStatusText(tr("Scanning…"));
        assign(m_lastError, std::nullopt, &AppModel::lastErrorChanged);
    } else if (word == u"status") {
        if (event.message) {
            // Engines speak English. What the application says in the same words has a translation.
            setStatusText(staticMetaObject.tr(event.message->toUtf8().constData(), nullptr));
            Q_EMIT engineSpoke(*event.message);
        }
    } else if (word == u"page") {
        setStatusText(tr("Captured page %1…").arg(event.index.value_or(0)));
    } else if (word == u"done") {
        handleDone(event);
    } else if (word == u"sample") {
        handleSample();
    } else if (word == u"adjusted") {
        handleAdjusted(event);
    } else if (word == u"error") {
        handleError(event);
    }
}

void AppModel::handleDevices(const EngineEvent &event)
{
    assign(m_devices, event.devices.value_or(QList<EngineEvent::Device>()),
           &AppModel::devicesChanged);
    setSearching(false);
    if (!m_selectedDeviceId && !m_devices.isEmpty())
        setSelectedDeviceId(m_devices.first().id);
    if (m_devices.isEmpty())
        setStatusText(noScannerText());
}

void AppModel::handleDone(const EngineEvent &event)
{
    const int pages = event.pages.value_or(0);
    const bool endsJob = m_isScanning;
    setIsScanning(false);
    if (pages <= 0) {
        setStatusText(tr("Nothing scanned"));
        flash(tr("Nothing scanned"));
        loadResults();
        if (endsJob)
            Q_EMIT scanEnded({.kind = ScanOutcome::Kind::nothingScanned});
        return;
    }

    assign(m_lastError, std::nullopt, &AppModel::lastErrorChanged);
    if (event.files && !event.files->isEmpty() && event.file) {
        assembleScan(*event.files, *event.file, pages);
        return;
    }
    // The engine made the PDF by itself.
    setStatusText(savedText(pages));
    flashSuccess(pages);
    setShowScans(true);
    loadResults();
    const QUrl file = event.file ? QUrl::fromLocalFile(*event.file) : QUrl();
    if (m_settings.ocr && event.file && event.file->endsWith(QLatin1String(".pdf")))
        runVisionOcr(file, pages);
    else if (endsJob)
        Q_EMIT scanEnded({.kind = ScanOutcome::Kind::saved, .file = file});
}

void AppModel::handleError(const EngineEvent &event)
{
    const bool endsJob = m_isScanning;
    setIsScanning(false);
    QString text = event.message.value_or(tr("Couldn't scan — try again"));
    if (text.contains(QLatin1String("Unknown command")))
        text = tr("Engine is out of date — rebuild it (build-engine.command)");
    setStatusText(text);
    assign(m_lastError, text, &AppModel::lastErrorChanged);
    flash(text);
    if (endsJob)
        Q_EMIT scanEnded({.kind = ScanOutcome::Kind::failed, .message = text});
}

void AppModel::flash(const QString &message)
{
    assign(m_toast, message, &AppModel::toastChanged);
    m_toastClear.start();
}

void AppModel::flashSuccess(int pages)
{
    assign(m_successCount, pages, &AppModel::successCountChanged);
    m_successClear.start();
}

} // namespace velmor
