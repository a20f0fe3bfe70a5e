#include "model/AppModel.h"
#include "pipeline/RawStore.h"
#include "pipeline/TextRecognition.h"
#include "pipeline/VisionOCR.h"
#include "pipeline/WithoutExceptions.h"

#include <QCoroFuture>
#include <QDateTime>
#include <QDir>
#include <QPointer>

#include <algorithm>

namespace velmor {

namespace {

/// Whether a path of the engine's can be where a PDF is saved: it must not reach other kinds of
/// files, whatever the engine says.
bool namesPdf(const QString &path)
{
    return QDir::isAbsolutePath(path) && path.endsWith(QLatin1String(".pdf"));
}

/// Why text can't be recognised at all, looked up in the background, if it is `wanted`.
QFuture<std::optional<QString>> lookForProblem(bool wanted)
{
    return wanted ? inBackground(recognitionProblem)
                  : QtFuture::makeReadyFuture(std::optional<QString>());
}

} // namespace

bool AppModel::canScan() const
{
    return m_engineRunning && !m_devices.isEmpty() && !m_isScanning;
}

void AppModel::primaryScan()
{
    if (m_isScanning)
        cancel();
    else if (m_devices.isEmpty())
        refreshDevices();
    else
        scan();
}

void AppModel::scan()
{
    if (!canScan())
        return;
    ensureOutputFolder();
    setIsScanning(true);
    setStatusText(m_settings.batch ? tr("Waiting for paper…") : tr("Scanning…"));
    m_activeScanDpi = rawValue(m_settings.quality);
    m_engine.send(scanCommand());
}

void AppModel::cancel()
{
    m_engine.send({.cmd = QStringLiteral("cancel")});
}

QString AppModel::nextOutputPath() const
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd_HHmmss"));
    return QDir(m_settings.outputFolder.toLocalFile())
        .absoluteFilePath(title(m_selectedPreset) + u'_' + time + QStringLiteral(".pdf"));
}

/// What every command that takes paper has. There is a device.
EngineCommand AppModel::captureCommand(const QString &word) const
{
    const auto device = std::ranges::find_if(
        m_devices, [&](const auto &entry) { return entry.id == m_selectedDeviceId; });
    EngineCommand command{
        .cmd = word,
        .deviceId = m_selectedDeviceId.value_or(m_devices.first().id),
        .source = m_settings.source,
        .dpi = rawValue(m_settings.quality),
        .colorMode = engineValue(m_settings.colorMode),
    };
    if (device != m_devices.end())
        command.driver = device->driver;
    return command;
}

EngineCommand AppModel::scanCommand() const
{
    EngineCommand command = captureCommand(QStringLiteral("scan"));
    command.batchWaitForPaper = m_settings.batch;
    command.autoSettings = EngineCommand::Auto{
        .crop = m_settings.cropEnabled,
        .cropWidthMode = QStringLiteral("auto"),
        .cropHeightMode = QStringLiteral("auto"),
        .deskew = m_settings.deskewEnabled,
        .cleanBackground = m_settings.cleanEnabled,
        .blankRemoval = m_settings.blankRemovalEnabled,
        .autoLevels = m_settings.autoLevelsEnabled,
        .ocr = false, // Text is recognised here, where the PDF is made.
        .ocrLanguage = m_settings.ocrLanguage,
        .brightness = m_settings.brightness,
        .contrast = m_settings.contrast,
    };
    command.output = EngineCommand::Output{nextOutputPath(), QStringLiteral("images")};
    return command;
}

void AppModel::assembleScan(const QStringList &pageImages, const QString &file, int pages)
{
    setStatusText(m_settings.ocr ? tr("Making text searchable…") : tr("Saving PDF…"));
    assemble(pageImages, QUrl::fromLocalFile(file), pages, m_activeScanDpi, m_settings.ocr);
}

QCoro::Task<> AppModel::assemble(QStringList pageImages, QUrl url, int pages, double dpi, bool ocr)
{
    const QPointer<AppModel> self(this);
    const std::function<bool(const PdfDocument &)> save = [self, url](const PdfDocument &document) {
        return self && namesPdf(url.toLocalFile()) && self->write(document, url);
    };
    const VisionOCR::Progress progress = beginAssembly();
    QFuture<std::optional<QString>> problem = lookForProblem(ocr);
    const bool saved = co_await VisionOCR::assemblePdf(pageImages, dpi, ocr, save, progress);
    const std::optional<QString> recognitionProblem = co_await problem;
    if (!self)
        co_return;
    endAssembly();
    if (saved)
        finishScan(pageImages, url, pages, told(recognitionProblem));
    else
        giveUpScan(pageImages);
}

void AppModel::finishScan(const QStringList &pageImages, const QUrl &url, int pages,
                          const QString &message)
{
    RawStore::adopt(pageImages, url);
    setStatusText(savedText(pages));
    flashSuccess(pages);
    setShowScans(true);
    loadResults();
    Q_EMIT scanEnded({.kind = ScanOutcome::Kind::saved, .file = url, .message = message});
}

void AppModel::giveUpScan(const QStringList &pageImages)
{
    setStatusText(tr("Couldn't save the PDF"));
    flash(tr("Couldn't save the PDF — page images kept in the scans folder"));
    loadResults();
    Q_EMIT scanEnded({.kind = ScanOutcome::Kind::notSaved, .pageImages = pageImages});
}

void AppModel::runVisionOcr(const QUrl &url, int pages)
{
    setStatusText(tr("Making text searchable…"));
    recognizeSaved(url, pages, rawValue(m_settings.quality));
}

QCoro::Task<> AppModel::recognizeSaved(QUrl url, int pages, double dpi)
{
    const QPointer<AppModel> self(this);
    const std::function<bool(const PdfDocument &, const QUrl &)> save =
        [self](const PdfDocument &document, const QUrl &location) {
            return self && self->write(document, location);
        };
    const VisionOCR::Progress progress = beginAssembly();
    QFuture<std::optional<QString>> lookUp = lookForProblem(true);
    const std::optional<QString> problem = co_await lookUp;
    // Without recognition the pages would be drawn anew, and lose by it, for nothing.
    bool recognized = false;
    if (!problem)
        recognized = co_await VisionOCR::ocrDocument(url, dpi, save, progress);
    if (!self)
        co_return;
    endAssembly();
    setStatusText(savedText(pages));
    const QString failure = tr("Text recognition failed — scan saved without it");
    if (!recognized)
        flash(failure);
    loadResults();
    Q_EMIT scanEnded({.kind = ScanOutcome::Kind::saved,
                      .file = url,
                      .message = recognized ? QString() : problem.value_or(failure)});
}

/// Notes that one more PDF is in the making. The answer publishes its progress.
VisionOCR::Progress AppModel::beginAssembly()
{
    ++m_assemblies;
    return [self = QPointer<AppModel>(this)](int done, int total) {
        if (self)
            self->assign(self->m_assemblyProgress, AssemblyProgress{done, total},
                         &AppModel::assemblyProgressChanged);
    };
}

void AppModel::endAssembly()
{
    if (--m_assemblies == 0)
        assign(m_assemblyProgress, std::nullopt, &AppModel::assemblyProgressChanged);
}

/// Shows why recognition can't work at all, if so, once. PDFs have no text then.
QString AppModel::told(const std::optional<QString> &recognitionProblem)
{
    if (!recognitionProblem || m_toldRecognitionProblem)
        return {};
    m_toldRecognitionProblem = true;
    flash(*recognitionProblem);
    return *recognitionProblem;
}

} // namespace velmor
