#include "browser/FolderWatch.h"

#include <QDir>
#include <QFileInfo>

namespace velmor {

FolderWatch::FolderWatch(QObject *parent) : QObject(parent)
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quiet);
    m_latest.setSingleShot(true);
    m_latest.setInterval(longestDelay);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FolderWatch::notice);
    connect(&m_quiet, &QTimer::timeout, this, &FolderWatch::tell);
    connect(&m_latest, &QTimer::timeout, this, &FolderWatch::tell);
}

void FolderWatch::setFolder(const QString &path)
{
    if (path == m_folder)
        return;
    m_folder = path;
    watch();
}

void FolderWatch::watch()
{
    QString place = QDir::cleanPath(m_folder);
    while (!place.isEmpty() && !QFileInfo(place).isDir() && !QDir(place).isRoot())
        place = QFileInfo(place).path();
    if (m_watcher.directories() == QStringList(place))
        return;
    if (!m_watcher.directories().isEmpty())
        m_watcher.removePaths(m_watcher.directories());
    m_watcher.addPath(place);
}

void FolderWatch::notice()
{
    m_quiet.start();
    if (!m_latest.isActive())
        m_latest.start();
}

void FolderWatch::tell()
{
    m_quiet.stop();
    m_latest.stop();
    // A folder that was replaced by another is watched anew.
    watch();
    Q_EMIT changed();
}

} // namespace velmor
