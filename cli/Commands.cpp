#include "cli/Commands.h"

#include "cli/CropRun.h"
#include "cli/DevicesRun.h"
#include "cli/Interrupts.h"
#include "cli/RebuildRun.h"
#include "cli/ScanRun.h"
#include "cli/TerminalText.h"
#include "model/ScanFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace velmor {

namespace {

/// Starts `run` on the event loop, and answers its exit code.
template <typename Run> int execute(Run &run)
{
    QObject::connect(
        &run, &Run::finished, qApp,
        [](ExitCode code) { QCoreApplication::exit(static_cast<int>(code)); },
        Qt::QueuedConnection);
    QMetaObject::invokeMethod(&run, &Run::start, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

ScanFiles::Outcome operated(AppModel &model, const FilesRequest &request)
{
    switch (request.operation) {
    case FilesRequest::Operation::rotate:
        return ScanFiles::rotate(model, request.files);
    case FilesRequest::Operation::merge:
        return ScanFiles::merge(model, request.files);
    case FilesRequest::Operation::split:
        return ScanFiles::split(model, request.files);
    }
    return {};
}

} // namespace

int carryOut(const ScanRequest &request)
{
    ScanRun run(request);
    const Interrupts interrupts;
    QObject::connect(&interrupts, &Interrupts::interrupted, &run, &ScanRun::interrupt);
    return execute(run);
}

int carryOut(const DevicesRequest &request)
{
    DevicesRun run(request);
    return execute(run);
}

int carryOut(const PresetsRequest &)
{
    const AppModel model;
    for (const ScanPreset &preset : model.presets())
        printLine(terminalText(preset.name));
    return static_cast<int>(ExitCode::success);
}

int carryOut(const MagicRequest &request)
{
    RebuildRun run(request);
    return execute(run);
}

int carryOut(const CropRequest &request)
{
    CropRun run(request);
    return execute(run);
}

int carryOut(const OcrRequest &request)
{
    RebuildRun run(request);
    return execute(run);
}

int carryOut(const FilesRequest &request)
{
    AppModel model;
    if (request.folder) {
        ScanSettings settings = model.settings();
        settings.outputFolder = *request.folder;
        model.setSettings(settings);
    }
    if (request.operation != FilesRequest::Operation::rotate)
        QDir().mkpath(model.settings().outputFolder.toLocalFile());
    const ScanFiles::Outcome outcome = operated(model, request);
    for (const QUrl &file : outcome.unopened)
        printErrorLine(terminalText(
            QStringLiteral("%1 couldn't be opened; it was left out.").arg(file.toLocalFile())));
    for (const QUrl &file : outcome.saved)
        printLine(QFile::encodeName(file.toLocalFile()));
    printErrorLine(terminalText(outcome.message));
    const bool isDone = outcome.isWritten && outcome.unopened.isEmpty() && !outcome.saved.isEmpty();
    return static_cast<int>(isDone ? ExitCode::success : ExitCode::notSaved);
}

int carryOut(const PrintRequest &request)
{
    printLine(request.text.trimmed().toLocal8Bit());
    return static_cast<int>(ExitCode::success);
}

int carryOut(const WrongUse &use)
{
    printErrorLine("velmor: " + terminalText(use.message));
    printErrorLine("Try “velmor --help”.");
    return static_cast<int>(ExitCode::wrongUse);
}

} // namespace velmor
