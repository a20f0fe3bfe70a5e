#include "scanengine/ScanJob.h"

#include "scanengine/JobRequest.h"
#include "scanengine/drivers/sane/StatusText.h"
#include "scanengine/imaging/PageProcessing.h"
#include "scanengine/imaging/Resample.h"

#include <new>
#include <utility>

namespace scanengine {
namespace {

Fault outOfMemory()
{
    return {QStringLiteral("The page needs more memory than there is. Choose a lower resolution.")};
}

QString blankPagesLeftOut(int count)
{
    return count == 1 ? QStringLiteral("1 blank page was left out.")
                      : QStringLiteral("%1 blank pages were left out.").arg(count);
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
    const auto tell = [this](const QString &message) {
        m_output.write(event::status(message));
    };
    OpenResult opened = m_drivers.open(m_command.deviceId, captureSettings, tell, stop);
    if (const Fault *fault = faultOf(opened))
        return *fault;
    if (std::holds_alternative<Cancelled>(opened))
        return std::nullopt;

    // A page that can't be saved stops the capture, just as the command "cancel" does.
    std::stop_source halt;
    const std::stop_callback haltWhenStopped(stop, [&halt] { halt.request_stop(); });
    PageLine line(m_pages,
                  [&](QImage sheet) { return finished(std::move(sheet), captureSettings); },
                  {[this](qsizetype number) { m_output.write(event::page(number)); },
                   [&halt] {
                       halt.request_stop();
                   }});
    auto &session = std::get<std::unique_ptr<ScanSession>>(opened);
    const auto captureFault = capture(*session, line, halt.get_token());
    session.reset();
    const auto lineFault = line.drain();
    if (line.blankPages() > 0)
        m_output.write(event::status(blankPagesLeftOut(line.blankPages())));
    return lineFault ? lineFault : captureFault;
}

/// Feeds the line with sheets; why it came to an end, unless the paper ended or it was stopped.
std::optional<Fault> ScanJob::capture(ScanSession &session, PageLine &line,
                                      const std::stop_token &stop)
{
    for (bool isFirst = true;; isFirst = false) {
        const FeedResult fed = feedSheet(session, line, stop);
        if (const Fault *fault = faultOf(fed))
            return *fault;
        if (std::holds_alternative<NoPaper>(fed) && isFirst)
            m_output.write(event::status(QStringLiteral("There is no paper in the feeder.")));
        if (!std::holds_alternative<SheetMoving>(fed))
            return std::nullopt;
        if (isFirst)
            m_output.write(event::scanStarted());
        SheetResult sheet = session.readSheet(stop);
        if (const Fault *fault = faultOf(sheet))
            return *fault;
        if (std::holds_alternative<Cancelled>(sheet))
            return std::nullopt;
        line.add(std::get<QImage>(std::move(sheet)));
    }
}

FeedResult ScanJob::feedSheet(ScanSession &session, PageLine &line, const std::stop_token &stop)
{
    FeedResult fed = session.feedSheet(WhenEmpty::finish, stop);
    if (!std::holds_alternative<NoPaper>(fed) || !m_command.batchWaitForPaper)
        return fed;
    if (!line.drain())
        m_output.write(event::status(QStringLiteral("Waiting for paper…")));
    return session.feedSheet(WhenEmpty::waitForPaper, stop);
}

PageOutcome ScanJob::finished(QImage sheet, const CaptureSettings &settings) const
{
    auto page = atResolution(std::exchange(sheet, QImage()), settings.dpi);
    if (!page)
        return Fault{QStringLiteral("The page is too large to scan at %1 dpi. Choose a lower "
                                    "resolution.")
                         .arg(settings.dpi)};
    auto image = finishedPage(std::move(*page), m_command.processing, settings.colorMode);
    if (!image)
        return BlankPage{};
    if (image->isNull())
        return outOfMemory();
    return *std::move(image);
}

void ScanJob::finish(const std::optional<Fault> &fault)
{
    const qsizetype pages = m_pages.paths().size();
    if (fault && pages == 0) {
        m_output.write(event::error(fault->message));
        return;
    }
    if (fault)
        m_output.write(event::status(withSavedPages(fault->message, pages)));
    m_output.write(event::done(m_pages.paths(), m_command.outputPath.value_or(QString())));
}

} // namespace scanengine
