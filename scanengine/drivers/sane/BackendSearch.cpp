#include "scanengine/drivers/sane/BackendSearch.h"

#include "scanengine/Log.h"
#include "scanengine/drivers/sane/SaneConfig.h"
#include "scanengine/drivers/sane/SaneWorker.h"

#include <QScopeGuard>

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

namespace scanengine {
namespace {

const QString configVariable = QStringLiteral("SANE_CONFIG_DIR");

} // namespace

BackendSearch::BackendSearch(const WorkerLaunch &launch, const SaneLimits &limits,
                             KnownDevices &known)
    : m_launch(launch), m_limits(limits), m_known(known), m_deadline(limits.wholeSearch)
{
}

void BackendSearch::run(const std::stop_token &stop)
{
    const QString setting = m_launch.environment.value(configVariable);
    const QStringList backends = scannerBackends(configuredBackends(saneConfigFolders(setting)));
    m_known.keepOnly(backends);

    QStringList local;
    std::vector<std::jthread> sideBySide;
    for (const QString &backend : backends) {
        if (isNetworkBackend(backend))
            sideBySide.emplace_back([this, backend, &stop] { searchInTurn({backend}, stop); });
        else
            local.append(backend);
    }
    searchInTurn(local, stop);
}

void BackendSearch::searchInTurn(const QStringList &backends, const std::stop_token &stop)
{
    OneBackendConfig config(m_launch.environment.value(configVariable));
    WorkerLaunch launch = m_launch;
    launch.environment.insert(configVariable, config.setting());
    std::unique_ptr<SaneWorker> worker;
    for (const QString &backend : backends) {
        const auto left = std::chrono::milliseconds(m_deadline.remainingTime());
        if (stop.stop_requested() || left.count() <= 0)
            break;
        if (!m_known.tryOccupy(backend))
            continue;
        const auto vacate = qScopeGuard([&] { m_known.vacate(backend); });
        if (!worker)
            worker = SaneWorker::start(launch);
        if (!worker || !config.choose(backend))
            break;
        const WorkerStep step{std::min(left, m_limits.backendSearch), WorkerTrouble::hungAtSearch};
        const auto reply = worker->ask<DevicesAnswer>(SearchRequest(), step, stop);
        if (const auto *answer = std::get_if<DevicesAnswer>(&reply)) {
            qCInfo(logging) << "Search of" << backend << "status" << int(answer->status)
                            << "devices" << answer->devices.size();
            if (answer->status == SaneStatus::good)
                m_known.replace(backend, answer->devices);
            continue;
        }
        qCWarning(logging) << "The search of" << backend << "was broken off";
        worker->end(std::chrono::milliseconds(0));
        worker.reset();
    }
    if (worker)
        worker->end(m_limits.searchEnd);
}

} // namespace scanengine
