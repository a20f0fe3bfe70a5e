#pragma once

#include "pipeline/VisionOCR.h"

#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QUrl>

/// What files from elsewhere are, and how images among them become pages.
///
/// All of this reads files, from slow disks perhaps: for background threads.
namespace velmor {

/// What a heap of files and folders holds, in the order in which people count: "page 2" comes
/// before "page 10".
struct ImportSources {
    QStringList pdfs;   ///< Paths.
    QStringList images; ///< Paths.
    QStringList others; ///< Names of what is neither, or isn't there.
    QString title;      ///< What the images together are called; empty if nothing tells.
};

/// Looks at what the files are by their content, and one level into folders: what lies there
/// without being a PDF or an image isn't meant, and left out.
[[nodiscard]] ImportSources importSources(const QList<QUrl> &files);

/// The resolution at which an image of `pixels` is put on paper. `stated` is what its file says, in
/// dots per inch, and holds if a scanner may have said it; cameras and screens state something
/// meaningless or nothing (0), and their pictures fill a sheet of A4 at most.
[[nodiscard]] double importDpi(QSize pixels, double stated);

/// How an image became page files.
enum class Staging { done, unreadable, notWritten };

/// Puts the pages of an image file into `folder` as files of its own, and appends them to `pages`:
/// as they are where that can be, upright and one by one for pictures that were taken with a
/// turned camera and for files with several.
[[nodiscard]] Staging stageImage(const QString &path, const QString &folder,
                                 QList<VisionOCR::PageFile> &pages);

} // namespace velmor
