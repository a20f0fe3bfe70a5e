#include "scanengine/ScanJob.h"

#include "scanengine/JobRequest.h"
#include "scanengine/imaging/PageProcessing.h"

#include <new>

namespace scanengine {
namespace {

Fault outOfMemory()
{
    return {QStringLiteral("The page needs more memory than there is. Choose a lower resolution.")};
}

} // namespace

ScanJob::ScanJob(const Command &command, const DriverList &drivers, OutputWriter &output)
    : m_command(command), m_drivers(drivers), m_output(output),
      m_pages(command.outputPath.value_or(QString()))
{
}

void ScanJob::run(const std::stop_token &stop)
{
    try {
        finish(scan(stop));
    } catch (const std::bad_alloc &) {
        finish(outOfMemory());
    }
}

/// Captures pages until the paper ends or the job is stopped; the reason if a fault ends it.
std::optional<Fault> ScanJob::scan(const std::stop_token &stop)
{
    if (stop.stop_requested())
        return std::nullopt;
    const auto settings = captureSettingsOf(m_command);
    if (const Fault *fault = faultOf(settings))
        return *fault;
    const auto &captureSettings = std::get<CaptureSettings>(settings);
    const auto opened = m_drivers.open(m_command.deviceId, captureSettings);
    if (const Fault *fault = faultOf(opened))
        return *fault;
    ScanSession &session = *std::get<std::unique_ptr<ScanSession>>(opened);

    for (bool isFirst = true;; isFirst = false) {
        const FeedResult fed = feedSheet(session, stop);
        if (const Fault *fault = faultOf(fed))
            return *fault;
        if (!std::holds_alternative<SheetMoving>(fed))
            return std::nullopt;
        if (isFirst)
            m_output.write(event::scanStarted());
        if (const auto fault = capturePage(session, captureSettings.colorMode))
            return fault;
    }
}

FeedResult ScanJob::feedSheet(ScanSession &session, const std::stop_token &stop)
{
    FeedResult fed = session.feedSheet(WhenEmpty::finish, stop);
    if (!std::holds_alternative<NoPaper>(fed))
        return fed;
    if (m_command.batchWaitForPaper) {
        m_output.write(event::status(QStringLiteral("Waiting for paper…")));
        return session.feedSheet(WhenEmpty::waitForPaper, stop);
    }
    if (m_pages.paths().isEmpty())
        m_output.write(event::status(QStringLiteral("There is no paper in the feeder.")));
    return fed;
}

std::optional<Fault> ScanJob::capturePage(ScanSession &session, ColorMode mode)
{
    Result<QImage> sheet = session.readSheet();
    if (const Fault *fault = faultOf(sheet))
        return *fault;
    const QImage page =
        finishedPage(std::get<QImage>(std::move(sheet)), m_command.processing, mode);
    if (page.isNull())
        return outOfMemory();
    if (auto fault = m_pages.save(page))
        return fault;
    m_output.write(event::page(m_pages.paths().size()));
    return std::nullopt;
}

void ScanJob::finish(const std::optional<Fault> &fault)
{
    if (fault && m_pages.paths().isEmpty()) {
        m_output.write(event::error(fault->message));
        return;
    }
    if (fault)
        m_output.write(event::status(fault->message));
    m_output.write(event::done(m_pages.paths(), m_command.outputPath.value_or(QString())));
}

} // namespace scanengine
