#pragma once

#include <QImage>
#include <QStringList>
#include <QUrl>

#include <optional>

/// The untouched page images of a scan, kept beside its PDF in a hidden sidecar folder.
///
/// For `<folder>/<stem>.pdf` they are `<folder>/.velmor_raw/<stem>/page_001.png`, `page_002.png`
/// and so on, whatever kind of file each came as. There is no index: the file system is the whole
/// state. A sidecar serves a PDF only while it has as many pages; callers make that test. No
/// operation reports a failure: what can't be done shows in `pageCount`. Any thread; two jobs on
/// the same PDF at once aren't guarded against. All locations are local files.
namespace velmor::RawStore {

/// Images of more pixels are refused before anything is allocated for them. A4 at 1200 dpi has
/// 139 million.
inline constexpr qint64 maxPixels = 300'000'000;

/// The sidecar folder of `pdf`, which need not exist.
[[nodiscard]] QUrl dir(const QUrl &pdf);

/// Moves the files at the paths `pageImages`, in page order, into a new sidecar that replaces any
/// old one as a whole. A file that can't be moved leaves a gap.
void adopt(const QStringList &pageImages, const QUrl &pdf);

/// Makes the sidecar of `from`, if there is one, that of `to` in the same folder, in place of any
/// that `to` has. False if it can't be moved; it stays then.
[[nodiscard]] bool move(const QUrl &from, const QUrl &to);

/// Deletes the sidecar, if there is one.
void remove(const QUrl &pdf);

/// How many files of the sidecar have a name that ends in ".png"; 0 without a sidecar.
[[nodiscard]] int pageCount(const QUrl &pdf);

/// The raw image of the page at a zero-based index, or nothing if the file isn't there.
[[nodiscard]] std::optional<QUrl> pageURL(const QUrl &pdf, int page);

/// Decodes the first image of any image file, whatever its name. Nothing for what isn't a regular
/// file, doesn't decode or has more than `maxPixels` pixels.
[[nodiscard]] std::optional<QImage> image(const QUrl &location);

} // namespace velmor::RawStore
