#include "cli/Commands.h"

#include "cli/DevicesRun.h"
#include "cli/Interrupts.h"
#include "cli/RebuildRun.h"
#include "cli/ScanRun.h"
#include "cli/TerminalText.h"

#include <QCoreApplication>

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

int carryOut(const OcrRequest &request)
{
    RebuildRun run(request);
    return execute(run);
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
