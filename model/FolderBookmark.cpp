#include "model/FolderBookmark.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace velmor {

std::optional<QByteArray> folderBookmark(const QUrl &folder)
{
    const QFileInfo info(folder.toLocalFile());
    if (!folder.isLocalFile() || !info.isDir())
        return {};
    return QFile::encodeName(info.absoluteFilePath());
}

std::optional<QUrl> bookmarkedFolder(const QByteArray &bookmark)
{
    const QString path = QFile::decodeName(bookmark);
    if (path.isEmpty() || !QDir::isAbsolutePath(path) || !QFileInfo(path).isDir())
        return {};
    return QUrl::fromLocalFile(path);
}

} // namespace velmor
