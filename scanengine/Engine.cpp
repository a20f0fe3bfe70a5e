#include "scanengine/Engine.h"

#include "scanengine/CalibrationSample.h"
#include "scanengine/ScanJob.h"

#include <chrono>
#include <new>
#include <utility>
#include <variant>

namespace scanengine {
namespace {

/// How long one page may take to come to its end, and one device search.
constexpr std::chrono::milliseconds jobPatience{5'000};
constexpr std::chrono::milliseconds searchPatience{10'000};

using AnswerEvent = QJsonObject (*)(const QString &file);

/// Does `work`, which makes one file, and answers with `event` or an error, or as a scan without
/// pages does when it was cancelled.
template <typename Work> void answerWithFile(OutputWriter &output, AnswerEvent event, Work work)
{
    SampleResult file = Fault{QStringLiteral("There is not enough memory. Calibrate again at a "
                                             "lower resolution.")};
    try {
        file = std::visit([](auto outcome) { return SampleResult(std::move(outcome)); }, work());
    } catch (const std::bad_alloc &) {
        // Then the sentence above is the answer.
    }
    if (const Fault *fault = faultOf(file))
        output.write(event::error(fault->message));
    else if (std::holds_alternative<Cancelled>(file))
        output.write(event::done({}, {}));
    else
        output.write(event(std::get<QString>(file)));
}

} // namespace

Engine::Engine(DriverList drivers, OutputWriter &output)
    : m_drivers(std::move(drivers)), m_output(output)
{
}

bool Engine::serve(CommandReader &input)
{
    if (takeCommands(input) == Ending::quit) {
        m_jobs.abandon();
        m_searches.abandon();
    } else {
        m_jobs.cancel();
    }
    const bool areJobsOver = m_jobs.finish(jobPatience);
    return m_searches.finish(searchPatience) && areJobsOver;
}

Engine::Ending Engine::takeCommands(CommandReader &input)
{
    for (;;) {
        const CommandReader::Item item = input.next();
        if (std::holds_alternative<CommandReader::End>(item))
            return Ending::endOfInput;
        if (std::holds_alternative<CommandReader::TooLong>(item)) {
            refuse(QStringLiteral("A line was not understood: it is too long."));
            continue;
        }
        const Result<Command> command = parseCommand(std::get<QByteArray>(item));
        if (const Fault *fault = faultOf(command)) {
            refuse(fault->message);
            continue;
        }
        if (std::get<Command>(command).verb == Verb::quit)
            return Ending::quit;
        start(std::get<Command>(command));
    }
}

void Engine::start(const Command &command)
{
    if (command.verb == Verb::cancel) {
        m_jobs.cancel();
        return;
    }
    if (command.verb == Verb::listDevices)
        startSearch();
    else
        startJob(command);
}

/// While a search runs, the answer is what is known; the search's own answer follows. Once that was
/// given, the next command searches anew.
void Engine::startSearch()
{
    const auto search = [this](const std::stop_token &stop) {
        const QList<Device> devices = m_drivers.devices(stop);
        m_isSearching = false;
        m_output.write(event::devices(devices));
    };
    // One search runs and one is about to leave the queue at most, so that there is always room.
    if (m_isSearching.exchange(true) || !m_searches.add(search, TaskQueue::Cancelling::ignored))
        m_output.write(event::devices(m_drivers.knownDevices()));
}

void Engine::startJob(const Command &command)
{
    const auto job = [this, command](const std::stop_token &stop) {
        run(command, stop);
    };
    const auto cancelling = command.verb == Verb::adjust ? TaskQueue::Cancelling::ignored
                                                         : TaskQueue::Cancelling::allowed;
    if (!m_jobs.add(job, cancelling))
        refuse(QStringLiteral("The scanner has too much to do already. Wait until it has finished "
                              "and try again."));
}

void Engine::run(const Command &command, const std::stop_token &stop)
{
    if (command.verb == Verb::adjust) {
        answerWithFile(m_output, event::adjusted, [&] { return m_previews.make(command); });
        return;
    }
    // The memory is for the pages.
    m_previews.forget();
    if (command.verb == Verb::scan)
        ScanJob(command, m_drivers, m_output).run(stop);
    else
        answerWithFile(m_output, event::sample,
                       [&] { return captureSample(command, m_drivers, stop); });
}

void Engine::refuse(const QString &message)
{
    m_output.write(event::error(message));
}

} // namespace scanengine
