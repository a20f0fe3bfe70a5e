#include "scanengine/CalibrationSample.h"

#include "scanengine/JobRequest.h"
#include "scanengine/PngFile.h"
#include "scanengine/imaging/Resample.h"

#include <QDir>

namespace scanengine {
namespace {

const QString sampleName = QStringLiteral(".velmor_raw.png");

SheetResult captureSheet(ScanSession &session, int dpi, const std::stop_token &stop)
{
    const FeedResult fed = session.feedSheet(WhenEmpty::finish, stop);
    if (const Fault *fault = faultOf(fed))
        return *fault;
    if (std::holds_alternative<NoPaper>(fed))
        return Fault{QStringLiteral("There is no paper in the feeder. Put a page in and calibrate "
                                    "again.")};
    if (std::holds_alternative<Cancelled>(fed))
        return Cancelled();
    const SheetResult sheet = session.readSheet(stop);
    if (const Fault *fault = faultOf(sheet))
        return *fault;
    if (std::holds_alternative<Cancelled>(sheet))
        return Cancelled();
    auto sample = atResolution(std::get<QImage>(sheet), dpi);
    if (!sample)
        return Fault{QStringLiteral("The page is too large to scan at %1 dpi. Calibrate again at a "
                                    "lower resolution.")
                         .arg(dpi)};
    return *std::move(sample);
}

} // namespace

SampleResult captureSample(const Command &command, const DriverList &drivers,
                           const std::stop_token &stop)
{
    const auto settings = captureSettingsOf(command);
    if (const Fault *fault = faultOf(settings))
        return *fault;
    const auto &captureSettings = std::get<CaptureSettings>(settings);
    // A calibration is answered by its one event alone.
    const TellStatus tellNobody = [](const QString &) {
    };
    const OpenResult opened = drivers.open(command.deviceId, captureSettings, tellNobody, stop);
    if (const Fault *fault = faultOf(opened))
        return *fault;
    if (std::holds_alternative<Cancelled>(opened))
        return Cancelled();
    const auto sheet =
        captureSheet(*std::get<std::unique_ptr<ScanSession>>(opened), captureSettings.dpi, stop);
    if (const Fault *fault = faultOf(sheet))
        return *fault;
    if (std::holds_alternative<Cancelled>(sheet))
        return Cancelled();
    QString path = QDir(captureSettings.outputFolder).filePath(sampleName);
    if (const auto fault = replacePng(std::get<QImage>(sheet), path, Flushing::atOnce))
        return *fault;
    return path;
}

} // namespace scanengine
