#pragma once

#include "scanengine/drivers/sane/KnownDevices.h"
#include "scanengine/drivers/sane/SaneLimits.h"
#include "scanengine/drivers/sane/WorkerProcess.h"

#include <QDeadlineTimer>
#include <QStringList>

#include <stop_token>

namespace scanengine {

/// Looks for the devices of all configured backends, each by itself, in worker processes: backends
/// that ask the network side by side, all others one after the other.
///
/// A backend that crashes or hangs costs its worker; the search goes on with the next one in a new
/// worker. What is known of it, and of one that is in use or that the time didn't suffice for,
/// stays as it was.
class BackendSearch {
public:
    /// Both outlive the search.
    BackendSearch(const WorkerLaunch &launch, const SaneLimits &limits, KnownDevices &known);

    /// Searches, until `stop` at most.
    void run(const std::stop_token &stop);

private:
    void searchInTurn(const QStringList &backends, const std::stop_token &stop);

    const WorkerLaunch &m_launch;
    const SaneLimits &m_limits;
    KnownDevices &m_known;
    QDeadlineTimer m_deadline;
};

} // namespace scanengine
