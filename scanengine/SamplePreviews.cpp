#include "scanengine/SamplePreviews.h"

#include "scanengine/JobRequest.h"
#include "scanengine/PngFile.h"
#include "scanengine/imaging/ImageFile.h"

#include <QDir>
#include <QFileInfo>

namespace scanengine {
namespace {

/// A larger sample is read anew for each preview. A4 at 600 dpi in colour has 139 MB.
constexpr qsizetype mostBytesKept = 256'000'000;

Fault noMemory()
{
    return {QStringLiteral("The preview needs more memory than there is. Calibrate again at a "
                           "lower resolution.")};
}

} // namespace

Result<QString> SamplePreviews::make(const Command &command)
{
    const auto mode = colorModeOf(command);
    if (const Fault *fault = faultOf(mode))
        return *fault;
    const QString input = command.input.value_or(QString());
    const QString output = command.outputPath.value_or(QString());
    if (!QDir::isAbsolutePath(input) || !QDir::isAbsolutePath(output))
        return Fault{QStringLiteral("The preview needs a sample and a place to be saved in. "
                                    "Calibrate again.")};
    const QFileInfo file(input);
    if (!file.isFile())
        return Fault{QStringLiteral("The calibration sample is no longer in \"%1\". Calibrate "
                                    "again.")
                         .arg(file.path())};
    Origin origin{input, file.size(), file.lastModified(), command.processing,
                  std::get<ColorMode>(mode)};
    origin.steps.brightness = origin.steps.contrast = 0;
    // A preview is shown of a blank sample, too.
    origin.steps.blankRemoval = false;
    Result<PreparedPage> sample = prepared(origin);
    if (const Fault *fault = faultOf(sample))
        return *fault;
    const QImage page =
        finishedPage(std::get<PreparedPage>(std::move(sample)), command.processing, origin.mode);
    if (page.isNull())
        return noMemory();
    if (const auto fault = replacePng(page, output, Flushing::bySystem))
        return *fault;
    return output;
}

Result<PreparedPage> SamplePreviews::prepared(const Origin &origin)
{
    if (m_kept && m_kept->origin == origin)
        return m_kept->page;
    forget();
    Result<QImage> sample = readPage(origin.path, 0);
    if (const Fault *fault = faultOf(sample))
        return Fault{QStringLiteral("The calibration sample can't be used. %1 Calibrate again.")
                         .arg(fault->message)};
    const auto page = preparedPage(std::get<QImage>(std::move(sample)), origin.steps, origin.mode);
    if (!page || page->image.isNull())
        return noMemory();
    if (page->image.sizeInBytes() <= mostBytesKept)
        m_kept = Kept{origin, *page};
    return *page;
}

} // namespace scanengine
