#include "scanengine/drivers/sane/SaneDriver.h"

#include "scanengine/Log.h"
#include "scanengine/drivers/sane/BackendSearch.h"
#include "scanengine/drivers/sane/PoliteRetry.h"
#include "scanengine/drivers/sane/SaneConfig.h"
#include "scanengine/drivers/sane/SaneSession.h"

#include <QCoreApplication>
#include <QDir>
#include <QScopeGuard>

#include <utility>

namespace scanengine {
namespace {

/// Once diagnosis is wanted, how much a backend is to tell: calls and states, but no data.
constexpr char debugLevel[] = "4";

} // namespace

SaneDriver::SaneDriver(WorkerLaunch launch, const SaneLimits &limits)
    : m_launch(std::move(launch)), m_limits(limits)
{
}

SaneDriver::~SaneDriver()
{
    static_cast<void>(m_endings.finish(m_limits.release));
}

WorkerLaunch SaneDriver::usualLaunch(const SaneLimits &limits)
{
    WorkerLaunch launch;
    launch.environment = QProcessEnvironment::systemEnvironment();
    const QDir folder(QCoreApplication::applicationDirPath());
    launch.program = launch.environment.value(QStringLiteral("SCANENGINE_WORKER"),
                                              folder.filePath(QStringLiteral("velmor-scanworker")));
    launch.memoryLimit = limits.workerMemory;
    return launch;
}

bool SaneDriver::owns(const QString &) const
{
    return true;
}

QList<Device> SaneDriver::devices(const std::stop_token &stop)
{
    search(stop);
    return knownDevices();
}

QList<Device> SaneDriver::knownDevices() const
{
    QList<Device> devices;
    const QList<SaneScanner> scanners = m_known.scanners();
    for (const SaneScanner &scanner : scanners)
        devices.append(scanner.device);
    return devices;
}

/// Searches all backends; one that is under way already is waited for instead.
void SaneDriver::search(const std::stop_token &stop)
{
    std::unique_lock lock(m_mutex);
    if (m_isSearching) {
        m_searchEnded.wait(lock, stop, [this] { return !m_isSearching; });
        return;
    }
    m_isSearching = true;
    lock.unlock();
    BackendSearch(m_launch, m_limits, m_known).run(stop);
    lock.lock();
    m_isSearching = false;
    m_searchEnded.notify_all();
}

std::optional<SaneScanner> SaneDriver::known(const QString &id) const
{
    const QList<SaneScanner> scanners = m_known.scanners();
    const SaneScanner *scanner = findScanner(scanners, id);
    return scanner ? std::optional(*scanner) : std::nullopt;
}

OpenResult SaneDriver::open(const QString &id, const CaptureSettings &settings,
                            const TellStatus &tell, const std::stop_token &stop)
{
    auto scanner = known(id);
    if (scanner) {
        Attempt attempt = openScanner(*scanner, settings, tell, stop);
        if (!attempt.isStale)
            return std::move(attempt.result);
    }
    // Not known yet, or plugged in anew since: then SANE calls it by another name.
    search(stop);
    const auto found = known(id);
    if (stop.stop_requested())
        return Cancelled{};
    if (!found)
        return Fault{troubleText(WorkerTrouble::deviceVanished)};
    return std::move(openScanner(*found, settings, tell, stop).result);
}

SaneDriver::Attempt SaneDriver::openScanner(const SaneScanner &scanner,
                                            const CaptureSettings &settings, const TellStatus &tell,
                                            const std::stop_token &stop)
{
    const QString backend = backendOf(scanner.saneName);
    if (!occupy(backend, tell, stop))
        return {stop.stop_requested() ? OpenResult(Cancelled{})
                                      : OpenResult(Fault{statusText(SaneStatus::deviceBusy)})};
    auto vacate = qScopeGuard([&] { m_known.vacate(backend); });
    auto worker = SaneWorker::start(launchFor(backend));
    if (!worker)
        return {Fault{troubleText(WorkerTrouble::notStarted)}};

    qCInfo(logging).noquote() << "Open" << scanner.saneName << "for" << scanner.device.id;
    const WorkerStep step{m_limits.open, WorkerTrouble::hungAtOpen};
    PoliteRetry busy(tell, waitingForBusyText(), m_limits.busy, m_limits.busyRetry);
    Reply<OptionsAnswer> reply = Cancelled{};
    const auto isBusy = [&reply] {
        const auto *refusal = std::get_if<OptionsAnswer>(&reply);
        return refusal && refusal->status == SaneStatus::deviceBusy;
    };
    do {
        reply = worker->ask<OptionsAnswer>(OpenRequest{scanner.saneName}, step, stop);
    } while (isBusy() && busy.pauseToRetry(stop));
    auto *answer = std::get_if<OptionsAnswer>(&reply);
    if (answer && answer->status != SaneStatus::good) {
        qCInfo(logging) << "Open: status" << int(answer->status);
        // With nothing open it ends at once; then a search can tell where the device is now.
        worker->end(m_limits.searchEnd);
        return {Fault{statusText(answer->status)}, answer->status == SaneStatus::invalid};
    }
    vacate.dismiss();
    const auto release = [this, backend](std::unique_ptr<SaneWorker> released) {
        letGo(std::move(released), backend);
    };
    // Devices that a saned serves are those of SANE's net backend.
    const DeviceSite site = backend == u"net" ? DeviceSite::scanServer : DeviceSite::own;
    if (answer)
        return {std::make_unique<SaneSession>(std::move(worker), site, std::move(answer->options),
                                              settings, m_limits, tell, release)};
    release(std::move(worker));
    if (const auto *trouble = std::get_if<WorkerTrouble>(&reply))
        return {Fault{troubleText(*trouble)}};
    return {Cancelled{}};
}

/// Takes the backend, which may be in the middle of its search or just be letting a device go.
bool SaneDriver::occupy(const QString &backend, const TellStatus &tell, const std::stop_token &stop)
{
    if (m_known.occupy(backend, m_limits.untold, stop))
        return true;
    if (stop.stop_requested())
        return false;
    tell(waitingForBusyText());
    return m_known.occupy(backend, m_limits.backendSearch + m_limits.release, stop);
}

/// Ends a worker beside whatever comes next; only then its backend is free again.
void SaneDriver::letGo(std::unique_ptr<SaneWorker> worker, const QString &backend)
{
    const auto end = [this, backend, leaving = std::shared_ptr<SaneWorker>(std::move(worker))](
                         const std::stop_token &) {
        leaving->end(m_limits.release);
        m_known.vacate(backend);
    };
    if (!m_endings.add(end, TaskQueue::Cancelling::ignored))
        m_known.vacate(backend);
}

WorkerLaunch SaneDriver::launchFor(const QString &backend) const
{
    WorkerLaunch launch = m_launch;
    const QString variable = QStringLiteral("SANE_DEBUG_") + backend.toUpper();
    if (isLogging() && !launch.environment.contains(variable))
        launch.environment.insert(variable, QString::fromLatin1(debugLevel));
    return launch;
}

} // namespace scanengine
