#include "scanengine/drivers/FeederSession.h"

#include "scanengine/drivers/Pause.h"
#include "scanengine/imaging/ImageFile.h"

#include <chrono>

namespace scanengine {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds lookEvery{100};
/// A file that nobody wrote to for this long is complete.
constexpr std::chrono::milliseconds restOfCompleteFile{1000};

bool wasLeftAlone(const PaperFile &file)
{
    return file.modified.msecsTo(QDateTime::currentDateTime()) >= restOfCompleteFile.count();
}

/// Waits until `file` is complete and answers its content then; nothing if it was taken away, or
/// if the job was told to stop. Files of some age cost no time; a date in the future is not relied
/// on.
std::optional<PaperFile> settled(PaperFile file, const std::stop_token &stop)
{
    Clock::time_point changed = Clock::now();
    while (!stop.stop_requested()) {
        const auto current = paperFileAt(file.path);
        if (!current)
            return std::nullopt;
        if (*current != file)
            changed = Clock::now();
        file = *current;
        if (wasLeftAlone(file) || Clock::now() - changed >= restOfCompleteFile)
            return file;
        pauseFor(lookEvery, stop);
    }
    return std::nullopt;
}

} // namespace

FeederSession::FeederSession(const QString &folder, const CaptureSettings &settings)
    : m_tray(folder), m_settings(settings), m_isFolderReadable(m_tray.reload())
{
}

FeedResult FeederSession::feedSheet(WhenEmpty whenEmpty, const std::stop_token &stop)
{
    while (!stop.stop_requested()) {
        if (m_file && ++m_file->page < m_file->pageCount)
            return SheetMoving{};
        m_file.reset();
        if (!m_isFolderReadable)
            return Fault{QStringLiteral("The feeder's folder can't be read. Make it available "
                                        "and scan again.")};
        if (const auto top = m_tray.top()) {
            const auto file = settled(*top, stop);
            if (stop.stop_requested())
                break;
            m_tray.take(file.value_or(*top));
            if (file)
                return feedFile(*file);
            continue;
        }
        if (whenEmpty == WhenEmpty::finish)
            return NoPaper{};
        pauseFor(lookEvery, stop);
        m_isFolderReadable = m_tray.reload();
    }
    return Cancelled{};
}

FeedResult FeederSession::feedFile(const PaperFile &file)
{
    const Result<int> pageCount = countPages(file.path);
    if (const Fault *fault = faultOf(pageCount))
        return *fault;
    m_file = {file.path, std::get<int>(pageCount), 0};
    return SheetMoving{};
}

SheetResult FeederSession::readSheet(const std::stop_token &)
{
    Result<QImage> page = readPage(m_file->path, m_file->page);
    if (const Fault *fault = faultOf(page))
        return *fault;
    QImage image = std::get<QImage>(std::move(page));
    if (m_settings.colorMode == ColorMode::gray || m_settings.colorMode == ColorMode::blackWhite)
        image.convertTo(QImage::Format_Grayscale8);
    return image;
}

} // namespace scanengine
