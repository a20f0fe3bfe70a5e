#include "scanengine/CommandReader.h"
#include "scanengine/Engine.h"
#include "scanengine/OutputWriter.h"
#include "scanengine/Protocol.h"
#include "scanengine/drivers/FeederDriver.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <sys/signalfd.h>
#include <unistd.h>
#include <vector>

namespace {

scanengine::DriverList makeDrivers()
{
    const QString folders = qEnvironmentVariable("SCANENGINE_FEEDER");
    std::vector<std::unique_ptr<scanengine::Driver>> drivers;
    drivers.push_back(
        std::make_unique<scanengine::FeederDriver>(folders.split(u':', Qt::SkipEmptyParts)));
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

} // namespace

/// The scanner engine: commands on standard input, events on standard output, devices from the
/// drivers. SCANENGINE_FEEDER names the folders, parted by colons, that serve as feeders.
int main(int argc, char **argv)
{
    std::signal(SIGPIPE, SIG_IGN);
    const int termination = makeTerminationDescriptor();
    // Images without a resolution then claim 96 dpi, which no scan has, and not 100.
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    const QCoreApplication application(argc, argv);

    // A library that prints must not break the stream of events: its words go to standard error.
    const int events = ::dup(STDOUT_FILENO);
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
