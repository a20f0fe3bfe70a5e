#pragma once

#include "scanengine/TaskQueue.h"
#include "scanengine/drivers/Driver.h"
#include "scanengine/drivers/sane/KnownDevices.h"
#include "scanengine/drivers/sane/SaneLimits.h"
#include "scanengine/drivers/sane/SaneWorker.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

namespace scanengine {

/// Scanners that SANE drives: on USB, and on the network by eSCL, WSD or a scanner server.
///
/// Backends are code that isn't trusted: no one of them is ever loaded into this process. Each
/// search and each session has worker processes of its own, which end with it and cost no more than
/// it when they fail.
class SaneDriver : public Driver {
public:
    /// `launch` tells how workers are started; their SANE_CONFIG_DIR is also where the backends to
    /// search are looked up.
    SaneDriver(WorkerLaunch launch, const SaneLimits &limits);
    /// Waits for the devices that are being let go, as long as the limits allow.
    ~SaneDriver() override;

    /// The program beside this one, unless the environment variable SCANENGINE_WORKER names
    /// another; in the environment of this process.
    [[nodiscard]] static WorkerLaunch usualLaunch(const SaneLimits &limits);

    /// Every one: ids come from the names of devices. So this driver is to be the last.
    [[nodiscard]] bool owns(const QString &id) const override;
    [[nodiscard]] QList<Device> devices(const std::stop_token &stop) override;
    [[nodiscard]] QList<Device> knownDevices() const override;
    [[nodiscard]] OpenResult open(const QString &id, const CaptureSettings &settings,
                                  const TellStatus &tell, const std::stop_token &stop) override;

private:
    struct Attempt {
        OpenResult result;
        bool isStale = false; ///< There is nothing at that place any more.
    };

    void search(const std::stop_token &stop);
    [[nodiscard]] std::optional<SaneScanner> known(const QString &id) const;
    [[nodiscard]] Attempt openScanner(const SaneScanner &scanner, const CaptureSettings &settings,
                                      const TellStatus &tell, const std::stop_token &stop);
    [[nodiscard]] bool occupy(const QString &backend, const TellStatus &tell,
                              const std::stop_token &stop);
    void letGo(std::unique_ptr<SaneWorker> worker, const QString &backend);
    [[nodiscard]] WorkerLaunch launchFor(const QString &backend) const;

    WorkerLaunch m_launch;
    SaneLimits m_limits;
    KnownDevices m_known;
    std::mutex m_mutex;
    std::condition_variable_any m_searchEnded;
    bool m_isSearching = false;
    TaskQueue m_endings; ///< Workers that let their devices go.
};

} // namespace scanengine
