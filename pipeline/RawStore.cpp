#include "pipeline/RawStore.h"

#include "model/Models.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <filesystem>
#include <mutex>

namespace velmor::RawStore {

namespace {

QDir sidecar(const QUrl &pdf)
{
    return QDir(dir(pdf).toLocalFile());
}

/// Qt's own limit of 128 MB refuses A4 at 600 dpi in colour; ours is on pixels. The largest image
/// it lets through takes 16 bits a channel, 2.4 GB. The limit is the process's, so set once.
void raiseAllocationLimit()
{
    static std::once_flag raised;
    std::call_once(raised, [] {
        QImageReader::setAllocationLimit(static_cast<int>(maxPixels * 8 / (1 << 20)) + 1);
    });
}

QString pageName(int page)
{
    return QStringLiteral("page_%1.png").arg(page + 1, 3, 10, QLatin1Char('0'));
}

} // namespace

QUrl dir(const QUrl &pdf)
{
    const QFileInfo file(pdf.toLocalFile());
    return QUrl::fromLocalFile(file.absolutePath() + QStringLiteral("/.velmor_raw/") +
                               fileStem(pdf) + QLatin1Char('/'));
}

void adopt(const QStringList &pageImages, const QUrl &pdf)
{
    remove(pdf);
    const QDir folder = sidecar(pdf);
    folder.mkpath(QStringLiteral("."));
    for (int page = 0; page < pageImages.size(); ++page)
        QFile::rename(pageImages[page], folder.filePath(pageName(page)));
}

bool move(const QUrl &from, const QUrl &to)
{
    const std::filesystem::path source = sidecar(from).filesystemAbsolutePath();
    const std::filesystem::path target = sidecar(to).filesystemAbsolutePath();
    std::error_code error;
    // Two spellings of one name, where the file system takes them for one.
    if (!std::filesystem::equivalent(source, target, error))
        remove(to);
    std::filesystem::rename(source, target, error);
    return !error || error == std::errc::no_such_file_or_directory;
}

void remove(const QUrl &pdf)
{
    sidecar(pdf).removeRecursively();
}

int pageCount(const QUrl &pdf)
{
    const QStringList names = sidecar(pdf).entryList(QDir::AllEntries | QDir::Hidden |
                                                     QDir::System | QDir::NoDotAndDotDot);
    return static_cast<int>(std::ranges::count_if(
        names, [](const QString &name) { return name.endsWith(QLatin1String(".png")); }));
}

std::optional<QUrl> pageURL(const QUrl &pdf, int page)
{
    const QString path = sidecar(pdf).filePath(pageName(page));
    if (page < 0 || !QFileInfo::exists(path))
        return std::nullopt;
    return QUrl::fromLocalFile(path);
}

std::optional<QImage> image(const QUrl &location)
{
    const QString path = location.toLocalFile();
    // A pipe or a device would block or never end.
    if (!QFileInfo(path).isFile())
        return std::nullopt;

    raiseAllocationLimit();
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const auto tooLarge = [](QSize size) {
        return static_cast<qint64>(size.width()) * size.height() > maxPixels;
    };
    if (tooLarge(reader.size()))
        return std::nullopt;
    QImage image = reader.read();
    if (image.isNull() || tooLarge(image.size()))
        return std::nullopt;
    return image;
}

} // namespace velmor::RawStore
