#pragma once

#include "scanengine/drivers/Driver.h"
#include "scanengine/drivers/sane/OptionPlan.h"
#include "scanengine/drivers/sane/SaneLimits.h"
#include "scanengine/drivers/sane/SaneWorker.h"

#include <functional>
#include <memory>
#include <optional>

namespace scanengine {

class FrameAssembly;

/// Where a device is: at this computer or a network of its own, or at another computer that shares
/// it.
enum class DeviceSite { own, scanServer };

/// One device of SANE at work, in a worker process of its own.
///
/// A feeder gives sheet after sheet; a flatbed gives one page, and then `NoPaper`. To wait for
/// paper, the feeder's sensor is watched, or feeding is tried again now and then; a device without
/// a feeder is asked for its scan button, and gives `NoPaper` if it has none. A device that says it
/// is busy, or is warming up, is asked again for some time.
class SaneSession : public ScanSession {
public:
    /// Lets a device go, when the session is over. Must not take long.
    using Release = std::function<void(std::unique_ptr<SaneWorker>)>;

    /// `worker` has the device open, with `options`.
    SaneSession(std::unique_ptr<SaneWorker> worker, DeviceSite site, SaneOptions options,
                const CaptureSettings &settings, const SaneLimits &limits, TellStatus tell,
                Release release);
    ~SaneSession() override;

    [[nodiscard]] FeedResult feedSheet(WhenEmpty whenEmpty, const std::stop_token &stop) override;
    [[nodiscard]] SheetResult readSheet(const std::stop_token &stop) override;

private:
    /// What a step has come to unless it went well.
    using Obstacle = std::variant<NoPaper, Cancelled, Fault>;

    [[nodiscard]] std::optional<Obstacle> leaveFlatbed(const std::stop_token &stop);
    void planAnew();
    [[nodiscard]] std::optional<Obstacle> setUp(const std::stop_token &stop);
    [[nodiscard]] std::optional<Obstacle> startPage(const std::stop_token &stop);
    [[nodiscard]] std::optional<Obstacle> startFrame(const std::stop_token &stop);
    [[nodiscard]] std::optional<Obstacle> endBatch(const std::stop_token &stop);
    [[nodiscard]] std::optional<Obstacle> readOptions(const std::stop_token &stop);
    [[nodiscard]] std::optional<Obstacle> waitForPaper(const std::stop_token &stop);
    [[nodiscard]] Fault faultFor(WorkerTrouble trouble) const;
    [[nodiscard]] Fault faultFor(SaneStatus status) const;
    [[nodiscard]] Fault faultFor(const Fault &frameFault) const;
    [[nodiscard]] std::optional<Obstacle> readFrame(FrameAssembly &assembly,
                                                    const std::stop_token &stop);

    std::unique_ptr<SaneWorker> m_worker;
    DeviceSite m_site;
    SaneOptions m_options;
    CaptureWish m_wish;
    SaneLimits m_limits;
    TellStatus m_tell;
    Release m_release;
    OptionPlan m_plan;
    Capture m_capture;
    FrameParameters m_frame; ///< Of the frame that has begun.
    bool m_isSetUp = false;
    bool m_isEmpty = false; ///< The feeder, when it was last tried.
    int m_pages = 0;        ///< Begun so far.
};

} // namespace scanengine
