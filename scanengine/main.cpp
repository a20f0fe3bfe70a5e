#include "scanengine/Arguments.h"
#include "scanengine/CommandReader.h"
#include "scanengine/Engine.h"
#include "scanengine/Log.h"
#include "scanengine/OutputWriter.h"
#include "scanengine/Protocol.h"
#include "scanengine/drivers/FeederDriver.h"
#include "scanengine/drivers/sane/SaneDriver.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/signalfd.h>
#include <unistd.h>
#include <vector>

namespace {

/// For wrong arguments, as commands of the shell have it.
constexpr int wrongUse = 2;

scanengine::DriverList makeDrivers()
{
    const QString folders = qEnvironmentVariable("SCANENGINE_FEEDER");
    const scanengine::SaneLimits limits;
    std::vector<std::unique_ptr<scanengine::Driver>> drivers;
    drivers.push_back(
        std::make_unique<scanengine::FeederDriver>(folders.split(u':', Qt::SkipEmptyParts)));
    drivers.push_back(std::make_unique<scanengine::SaneDriver>(
        scanengine::SaneDriver::usualLaunch(limits), limits));
    return scanengine::DriverList(std::move(drivers));
}

/// A descriptor that has something to read once the process is asked to terminate; the request no
/// longer ends the process by itself, so that a page is finished and a device is let go first.
/// Call before any thread is started: only threads started later inherit this.
int makeTerminationDescriptor()
{
    sigset_t requests;
    sigemptyset(&requests);
    sigaddset(&requests, SIGTERM);
    sigaddset(&requests, SIGINT);
    pthread_sigmask(SIG_BLOCK, &requests, nullptr);
    return ::signalfd(-1, &requests, SFD_CLOEXEC);
}

/// Does what the arguments ask for before the engine serves; the exit code if that is all.
std::optional<int> heedArguments()
{
    using namespace scanengine;
    const auto parsed = parseArguments(QCoreApplication::arguments().mid(1),
                                       qEnvironmentVariable("SCANENGINE_LOG"));
    if (const Fault *fault = faultOf(parsed)) {
        std::fprintf(stderr, "scanengine: %s\n", qPrintable(fault->message));
        return wrongUse;
    }
    const auto &arguments = std::get<Arguments>(parsed);
    if (arguments.wantsHelp || arguments.wantsVersion) {
        std::fputs(
            qPrintable(arguments.wantsHelp ? usageText() : QStringLiteral(SCANENGINE_VERSION "\n")),
            stdout);
        return EXIT_SUCCESS;
    }
    if (!arguments.logFile.isEmpty() && !logTo(arguments.logFile)) {
        std::fprintf(stderr, "scanengine: the log file %s can't be written\n",
                     qPrintable(arguments.logFile));
        return EXIT_FAILURE;
    }
    return std::nullopt;
}

} // namespace

/// The scanner engine: commands on standard input, events on standard output, devices from the
/// drivers. See `usageText` for its arguments and environment.
int main(int argc, char **argv)
{
    std::signal(SIGPIPE, SIG_IGN);
    const int termination = makeTerminationDescriptor();
    // Images without a resolution then claim 96 dpi, which no scan has, and not 100.
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    const QCoreApplication application(argc, argv);
    if (const auto exitCode = heedArguments())
        return *exitCode;

    // A library that prints must not break the stream of events: its words go to standard error.
    const int events = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (events < 0 || ::dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        return EXIT_FAILURE;

    scanengine::OutputWriter output(events);
    output.write(scanengine::event::ready(QStringLiteral(SCANENGINE_VERSION)));
    scanengine::CommandReader input(STDIN_FILENO, termination);
    scanengine::Engine engine(makeDrivers(), output);
    if (!engine.serve(input))
        std::_Exit(EXIT_FAILURE);
    return EXIT_SUCCESS;
}
