#include "scanengine/JobRequest.h"

#include <QDir>
#include <QFileInfo>

namespace scanengine {
namespace {

constexpr int lowestDpi = 50;
constexpr int highestDpi = 1200;

} // namespace

Result<ColorMode> colorModeOf(const Command &command)
{
    if (!command.colorMode)
        return ColorMode::automatic;
    if (const auto mode = colorModeOf(*command.colorMode))
        return *mode;
    return Fault{QStringLiteral("That colour mode is not known. Choose auto, color, gray or bw.")};
}

Result<PaperSource> paperSourceOf(const Command &command)
{
    if (!command.source || *command.source == u"auto")
        return PaperSource::automatic;
    if (*command.source == u"flatbed")
        return PaperSource::flatbed;
    return Fault{QStringLiteral("That paper source is not known. Choose auto or flatbed.")};
}

Result<CaptureSettings> captureSettingsOf(const Command &command)
{
    const Result<ColorMode> mode = colorModeOf(command);
    if (const Fault *fault = faultOf(mode))
        return *fault;
    const Result<PaperSource> source = paperSourceOf(command);
    if (const Fault *fault = faultOf(source))
        return *fault;
    const int dpi = command.dpi.value_or(300);
    if (dpi < lowestDpi || dpi > highestDpi)
        return Fault{QStringLiteral("A resolution of %1 dpi is not possible. Choose one from %2 to "
                                    "%3 dpi.")
                         .arg(dpi)
                         .arg(lowestDpi)
                         .arg(highestDpi)};
    const QString path = command.outputPath.value_or(QString());
    if (!QDir::isAbsolutePath(path) || QFileInfo(path).fileName().isEmpty())
        return Fault{QStringLiteral("The scan was given no place to be saved in. Choose a folder "
                                    "for scans.")};
    const QString folder = QFileInfo(path).absolutePath();
    if (!QFileInfo(folder).isDir() || !QFileInfo(folder).isWritable())
        return Fault{QStringLiteral("Scans can't be saved in \"%1\". Make that folder available or "
                                    "choose another one.")
                         .arg(folder)};
    return CaptureSettings{dpi, std::get<PaperSource>(source), std::get<ColorMode>(mode), folder};
}

} // namespace scanengine
