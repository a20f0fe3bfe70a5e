#include "model/ImportSources.h"

#include "pipeline/RawStore.h"

#include <QCollator>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace velmor {

namespace {

/// Readers of PDF accept some bytes before the header.
constexpr qint64 headerRoom = 1024;

/// Dots per inch that scanners state. Below are screens and cameras.
constexpr double leastScan = 100;
constexpr double mostScan = 4800;
/// For pictures without a size on paper: the longer side of A4, in inches, and what small ones have
/// so that they aren't blown up to that.
constexpr double sheetLength = 11.69;
constexpr double leastPicture = 96;

constexpr double metresPerInch = 0.0254;

enum class Kind { pdf, image, other };

Kind kindOf(const QString &path)
{
    QFile file(path);
    // A pipe or a device would block.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return Kind::other;
    if (file.read(headerRoom).contains("%PDF-"))
        return Kind::pdf;
    static const std::array<QByteArray, 9> formats{"png",  "jpeg", "tiff", "bmp", "gif",
                                                   "webp", "pbm",  "pgm",  "ppm"};
    return std::ranges::count(formats, QImageReader::imageFormat(path)) ? Kind::image : Kind::other;
}

/// Whether a damaged file of this name is worth a word.
bool looksMeant(const QString &path)
{
    const QByteArray suffix = QFileInfo(path).suffix().toLower().toUtf8();
    return suffix == "pdf" || QImageReader::supportedImageFormats().contains(suffix);
}

void sort(QStringList &paths)
{
    // The "C" locale has no order of its own for numbers.
    const QLocale locale;
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::ranges::stable_sort(paths, [&](const QString &one, const QString &other) {
        const int order = collator.compare(QFileInfo(one).fileName(), QFileInfo(other).fileName());
        return order != 0 ? order < 0 : one < other;
    });
}

void add(ImportSources &sources, const QString &path)
{
    switch (kindOf(path)) {
    case Kind::pdf:
        sources.pdfs.append(path);
        break;
    case Kind::image:
        sources.images.append(path);
        break;
    case Kind::other:
        sources.others.append(QFileInfo(path).fileName());
        break;
    }
}

void addFolder(ImportSources &sources, const QString &folder)
{
    for (const QFileInfo &entry : QDir(folder).entryInfoList(QDir::Files)) {
        if (looksMeant(entry.fileName()))
            add(sources, entry.filePath());
    }
}

/// The images' own name if there is one alone, else that of the folder they all came in.
QString titleOf(const ImportSources &sources, const QList<QUrl> &files)
{
    if (sources.images.size() == 1)
        return QFileInfo(sources.images.first()).completeBaseName();
    const QFileInfo only(files.size() == 1 ? files.first().toLocalFile() : QString());
    return only.isDir() ? QDir(only.filePath()).dirName() : QString();
}

double statedDpi(const QImage &image)
{
    // Images whose files state nothing get the screen's.
    static const int unstated = QImage(1, 1, QImage::Format_Mono).dotsPerMeterX();
    const int stated = image.dotsPerMeterX();
    return stated == unstated ? 0 : stated * metresPerInch;
}

QString nextPage(const QString &folder, const QList<VisionOCR::PageFile> &pages,
                 const char *extension)
{
    return QDir(folder).filePath(
        QStringLiteral("%1.%2").arg(pages.size() + 1).arg(QLatin1StringView(extension)));
}

/// One picture of a file, upright. Nothing if it can't be read.
std::optional<QImage> readUpright(const QString &path, int picture)
{
    // A reader for each: the one for TIFF loses its place in the file after a picture.
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (picture > 0 && !reader.jumpToImage(picture))
        return std::nullopt;
    const QSize size = reader.size();
    if (static_cast<qint64>(size.width()) * size.height() > RawStore::maxPixels)
        return std::nullopt;
    QImage image = reader.read();
    return image.isNull() ? std::nullopt : std::optional(std::move(image));
}

/// The first `count` pictures of the file as pages.
Staging stageAnew(const QString &path, int count, const QString &folder,
                  QList<VisionOCR::PageFile> &pages)
{
    const qsizetype before = pages.size();
    for (int picture = 0; picture < count; ++picture) {
        const std::optional<QImage> image = readUpright(path, picture);
        const QString file = nextPage(folder, pages, "png");
        if (!image || !image->save(file, "png")) {
            pages.resize(before);
            return image ? Staging::notWritten : Staging::unreadable;
        }
        pages.append({file, importDpi(image->size(), statedDpi(*image))});
    }
    return Staging::done;
}

} // namespace

ImportSources importSources(const QList<QUrl> &files)
{
    ImportSources sources;
    for (const QUrl &url : files) {
        const QString path = url.toLocalFile();
        if (QFileInfo(path).isDir())
            addFolder(sources, path);
        else if (url.isLocalFile())
            add(sources, path);
        else
            sources.others.append(url.fileName());
    }
    sort(sources.pdfs);
    sort(sources.images);
    sources.title = titleOf(sources, files);
    return sources;
}

double importDpi(QSize pixels, double stated)
{
    if (stated >= leastScan && stated <= mostScan)
        return stated;
    return std::max(leastPicture, std::max(pixels.width(), pixels.height()) / sheetLength);
}

Staging stageImage(const QString &path, const QString &folder, QList<VisionOCR::PageFile> &pages)
{
    // Also raises the limits of the reader.
    const std::optional<QImage> image = RawStore::image(QUrl::fromLocalFile(path));
    if (!image)
        return Staging::unreadable;
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    // Moving pictures hold several pictures, too, but not pages. Counted first: the reader for TIFF
    // can't do that once it has looked at a picture.
    const int count = format == "tiff" ? std::max(1, reader.imageCount()) : 1;
    const bool isUpright = reader.transformation() == QImageIOHandler::TransformationNone;
    if (!isUpright || count > 1)
        return stageAnew(path, count, folder, pages);
    // The pipeline goes by the name: a JPEG goes into the document as it is, and all else is
    // treated as what a scanner's engine leaves.
    const QString file = nextPage(folder, pages, format == "jpeg" ? "jpg" : "png");
    if (!QFile::copy(path, file))
        return Staging::notWritten;
    pages.append({file, importDpi(image->size(), statedDpi(*image))});
    return Staging::done;
}

} // namespace velmor
