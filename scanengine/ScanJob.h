#pragma once

#include "scanengine/OutputWriter.h"
#include "scanengine/PageFiles.h"
#include "scanengine/PageLine.h"
#include "scanengine/Protocol.h"
#include "scanengine/drivers/DriverList.h"

#include <optional>
#include <stop_token>

namespace scanengine {

/// One scan from its command to its "done" or "error".
///
/// Pages are finished and saved beside the capture of the next ones, a bounded number of them at a
/// time. With `batchWaitForPaper` an empty feeder doesn't end the scan: it goes on with the paper
/// that comes, until `stop`. It ends by itself only on a device that can't tell of more paper, a
/// flatbed without a button. Pages that were captured are never given up: after a fault of the
/// device, and after `stop`, they are what the scan is done with, a fault being told by a "status"
/// first.
class ScanJob {
public:
    /// `drivers` and `output` outlive the job.
    ScanJob(const Command &command, const DriverList &drivers, OutputWriter &output);

    /// Blocks until the scan is over, and writes its events.
    void run(const std::stop_token &stop);

private:
    [[nodiscard]] std::optional<Fault> scan(const std::stop_token &stop);
    [[nodiscard]] std::optional<Fault> capture(ScanSession &session, PageLine &line,
                                               const std::stop_token &stop);
    [[nodiscard]] FeedResult feedSheet(ScanSession &session, PageLine &line,
                                       const std::stop_token &stop);
    [[nodiscard]] PageOutcome finished(QImage sheet, const CaptureSettings &settings) const;
    void finish(const std::optional<Fault> &fault);

    const Command &m_command;
    const DriverList &m_drivers;
    OutputWriter &m_output;
    PageFiles m_pages;
    int m_blankPages = 0; ///< Left out because nothing is on them.
};

} // namespace scanengine
