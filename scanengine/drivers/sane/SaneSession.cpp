#include "scanengine/drivers/sane/SaneSession.h"

#include "scanengine/Log.h"
#include "scanengine/drivers/Pause.h"
#include "scanengine/drivers/sane/FrameAssembly.h"
#include "scanengine/drivers/sane/PoliteRetry.h"

#include <utility>

namespace scanengine {
namespace {

/// Older backends tell by these numbers that the lamp is warming up or the transport is locked.
constexpr int warmingUp = 12;

/// How much more than announced a device may send before it counts as out of its mind, in bytes.
constexpr qint64 mostSurplus = 16 * 1024 * 1024;

FeedResult asFeedResult(const std::variant<NoPaper, Cancelled, Fault> &obstacle)
{
    return std::visit([](const auto &alternative) -> FeedResult { return alternative; }, obstacle);
}

} // namespace

SaneSession::SaneSession(std::unique_ptr<SaneWorker> worker, DeviceSite site, SaneOptions options,
                         const CaptureSettings &settings, const SaneLimits &limits, TellStatus tell,
                         Release release)
    : m_worker(std::move(worker)), m_site(site), m_options(std::move(options)),
      m_wish{settings.source, settings.dpi, settings.colorMode}, m_limits(limits),
      m_tell(std::move(tell)), m_release(std::move(release)), m_plan(m_wish)
{
}

SaneSession::~SaneSession()
{
    m_release(std::move(m_worker));
}

FeedResult SaneSession::feedSheet(WhenEmpty whenEmpty, const std::stop_token &stop)
{
    if (m_pages > 0 && !m_capture.isFeeder) {
        if (whenEmpty == WhenEmpty::finish)
            return NoPaper{};
        if (const auto obstacle = leaveFlatbed(stop))
            return asFeedResult(*obstacle);
    }
    for (;;) {
        // A feeder that was empty just now isn't tried again at once.
        if (std::exchange(m_isEmpty, false) && whenEmpty == WhenEmpty::waitForPaper) {
            if (const auto end = waitForPaper(stop))
                return asFeedResult(*end);
        }
        const auto obstacle = startPage(stop);
        if (!obstacle) {
            ++m_pages;
            return SheetMoving{};
        }
        m_isEmpty = std::holds_alternative<NoPaper>(*obstacle);
        if (!m_isEmpty || whenEmpty == WhenEmpty::finish)
            return asFeedResult(*obstacle);
    }
}

/// After a page from the flatbed: waits until another page can be expected, preferably in the
/// feeder.
std::optional<SaneSession::Obstacle> SaneSession::leaveFlatbed(const std::stop_token &stop)
{
    if (auto obstacle = endBatch(stop))
        return obstacle;
    if (!paperSensor(m_options)) {
        planAnew();
        if (auto obstacle = setUp(stop))
            return obstacle;
        if (m_capture.isFeeder)
            return std::nullopt;
    }
    if (auto obstacle = waitForPaper(stop))
        return obstacle;
    planAnew();
    return std::nullopt;
}

void SaneSession::planAnew()
{
    m_plan = OptionPlan(m_wish);
    m_isSetUp = false;
}

/// Makes the settings that are left to make.
std::optional<SaneSession::Obstacle> SaneSession::setUp(const std::stop_token &stop)
{
    if (m_isSetUp)
        return std::nullopt;
    const WorkerStep step{m_limits.option, WorkerTrouble::hungAtOpen};
    while (const auto setting = m_plan.nextSetting(m_options)) {
        auto reply = m_worker->ask<OptionsAnswer>(SetRequest{*setting}, step, stop);
        if (std::holds_alternative<Cancelled>(reply))
            return Cancelled{};
        if (const auto *trouble = std::get_if<WorkerTrouble>(&reply))
            return faultFor(*trouble);
        auto &answer = std::get<OptionsAnswer>(reply);
        qCInfo(logging) << "Set" << setting->name << "status" << int(answer.status);
        m_options = std::move(answer.options);
    }
    m_capture = m_plan.capture(m_options);
    m_isSetUp = true;
    return std::nullopt;
}

/// Starts the next page, on the flatbed if there is no first one in the feeder.
std::optional<SaneSession::Obstacle> SaneSession::startPage(const std::stop_token &stop)
{
    for (;;) {
        if (const auto obstacle = setUp(stop))
            return obstacle;
        const auto obstacle = startFrame(stop);
        if (!obstacle || !std::holds_alternative<NoPaper>(*obstacle))
            return obstacle;
        if (const auto hindrance = endBatch(stop))
            return hindrance;
        if (m_pages > 0 || !m_plan.fallBackToFlatbed())
            return NoPaper{};
        m_isSetUp = false;
    }
}

std::optional<SaneSession::Obstacle> SaneSession::startFrame(const std::stop_token &stop)
{
    PoliteRetry busy(m_tell, waitingForBusyText(), m_limits.busy, m_limits.busyRetry);
    PoliteRetry lamp(m_tell, waitingForLampText(), m_limits.start, m_limits.busyRetry);
    for (;;) {
        const WorkerStep step{m_limits.start, WorkerTrouble::hungAtStart};
        const auto reply = m_worker->ask<StartedAnswer>(StartRequest(), step, stop);
        if (std::holds_alternative<Cancelled>(reply))
            return Cancelled{};
        if (const auto *trouble = std::get_if<WorkerTrouble>(&reply))
            return faultFor(*trouble);
        const auto &answer = std::get<StartedAnswer>(reply);
        qCInfo(logging) << "Start: status" << int(answer.status);
        m_frame = answer.parameters;
        if (answer.status == SaneStatus::good)
            return std::nullopt;
        if (answer.status == SaneStatus::noDocs)
            return NoPaper{};
        const bool isAnotherTry =
            (answer.status == SaneStatus::deviceBusy && busy.pauseToRetry(stop)) ||
            (int(answer.status) == warmingUp && lamp.pauseToRetry(stop));
        if (!isAnotherTry)
            return faultFor(answer.status);
    }
}

/// Tells the device that no further page is wanted for now.
std::optional<SaneSession::Obstacle> SaneSession::endBatch(const std::stop_token &stop)
{
    const WorkerStep step{m_limits.option, WorkerTrouble::hungAtStart};
    const auto reply = m_worker->ask<CancelledAnswer>(CancelRequest(), step, stop);
    if (std::holds_alternative<Cancelled>(reply))
        return Cancelled{};
    if (const auto *trouble = std::get_if<WorkerTrouble>(&reply))
        return faultFor(*trouble);
    return std::nullopt;
}

std::optional<SaneSession::Obstacle> SaneSession::readOptions(const std::stop_token &stop)
{
    const WorkerStep step{m_limits.option, WorkerTrouble::hungAtOpen};
    auto reply = m_worker->ask<OptionsAnswer>(OptionsRequest(), step, stop);
    if (std::holds_alternative<Cancelled>(reply))
        return Cancelled{};
    if (const auto *trouble = std::get_if<WorkerTrouble>(&reply))
        return faultFor(*trouble);
    m_options = std::move(std::get<OptionsAnswer>(reply).options);
    return std::nullopt;
}

/// Waits until it makes sense to start a page; `NoPaper` if the device can't tell when.
std::optional<SaneSession::Obstacle> SaneSession::waitForPaper(const std::stop_token &stop)
{
    const bool hasSensor = paperSensor(m_options);
    const bool hasButton = !m_capture.isFeeder && scanButton(m_options);
    if (!hasSensor && !hasButton) {
        if (!m_capture.isFeeder)
            return NoPaper{};
        pauseFor(m_limits.paperRetry, stop);
        return stop.stop_requested() ? std::optional<Obstacle>(Cancelled{}) : std::nullopt;
    }
    for (;;) {
        pauseFor(m_limits.sensorRetry, stop);
        if (stop.stop_requested())
            return Cancelled{};
        if (auto obstacle = readOptions(stop))
            return obstacle;
        if (hasSensor && feederHoldsPaper(m_options).value_or(true))
            return std::nullopt;
        if (hasButton && isScanButtonPressed(m_options))
            return std::nullopt;
    }
}

SheetResult SaneSession::readSheet(const std::stop_token &stop)
{
    const bool isDpiKnown = m_capture.xDpi > 0 && m_capture.yDpi > 0;
    FrameAssembly assembly(isDpiKnown ? m_capture.xDpi : m_wish.dpi,
                           isDpiKnown ? m_capture.yDpi : m_wish.dpi);
    for (;;) {
        auto obstacle = readFrame(assembly, stop);
        if (!obstacle && assembly.isComplete())
            return assembly.take();
        if (!obstacle)
            obstacle = startFrame(stop);
        if (!obstacle)
            continue;
        if (std::holds_alternative<Cancelled>(*obstacle))
            return Cancelled{};
        const Fault *fault = std::get_if<Fault>(&*obstacle);
        return fault ? *fault : Fault{statusText(SaneStatus::noDocs)};
    }
}

// When the server or the way to it breaks down, SANE's net backend may crash, report an error of
// input and output or the number of an error of the system, or give a frame that can't be. The
// scanner itself is seldom to blame then.

Fault SaneSession::faultFor(WorkerTrouble trouble) const
{
    const bool isLost = m_site == DeviceSite::scanServer && trouble == WorkerTrouble::crashed;
    return {troubleText(isLost ? WorkerTrouble::serverLost : trouble)};
}

Fault SaneSession::faultFor(SaneStatus status) const
{
    const bool isFromScanner = status > SaneStatus::good && status <= SaneStatus::accessDenied &&
                               status != SaneStatus::endOfData && status != SaneStatus::ioError;
    const bool isLost = m_site == DeviceSite::scanServer && !isFromScanner;
    return {isLost ? troubleText(WorkerTrouble::serverLost) : statusText(status)};
}

Fault SaneSession::faultFor(const Fault &frameFault) const
{
    return m_site == DeviceSite::scanServer ? Fault{troubleText(WorkerTrouble::serverLost)}
                                            : frameFault;
}

std::optional<SaneSession::Obstacle> SaneSession::readFrame(FrameAssembly &assembly,
                                                            const std::stop_token &stop)
{
    if (const auto fault = assembly.begin(m_frame))
        return faultFor(*fault);
    qint64 bytes = 0;
    for (;;) {
        const auto reply = m_worker->receive({m_limits.data, WorkerTrouble::hungInPage}, stop);
        if (std::holds_alternative<Cancelled>(reply) || stop.stop_requested())
            return Cancelled{};
        if (const auto *trouble = std::get_if<WorkerTrouble>(&reply))
            return faultFor(*trouble);
        const auto &answer = std::get<WorkerAnswer>(reply);
        if (const auto *data = std::get_if<DataAnswer>(&answer)) {
            if (const auto fault = assembly.append(data->bytes))
                return faultFor(*fault);
            bytes += data->bytes.size();
            const qint64 announced = qint64{m_frame.lines} * m_frame.bytesPerLine;
            if (m_frame.lines >= 0 && bytes > announced + mostSurplus)
                return Fault{troubleText(WorkerTrouble::hungInPage)};
            continue;
        }
        const auto *end = std::get_if<FrameEndAnswer>(&answer);
        if (!end)
            return Fault{troubleText(WorkerTrouble::crashed)};
        qCInfo(logging) << "Frame ended after" << assembly.linesRead() << "lines, status"
                        << int(end->status);
        if (end->status != SaneStatus::endOfData)
            return faultFor(end->status);
        if (const auto fault = assembly.end())
            return faultFor(*fault);
        return std::nullopt;
    }
}

} // namespace scanengine
