#include "model/StagingFolder.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace velmor {

namespace {

QString hiddenFolder(const QString &outputFolder)
{
    return QDir(outputFolder).filePath(QStringLiteral(".velmor_raw"));
}

QString newFolderIn(const QString &outputFolder)
{
    const QString hidden = hiddenFolder(outputFolder);
    QDir().mkpath(hidden);
    return hidden + QStringLiteral("/.import-XXXXXX");
}

/// A lock that lasts as long as its process, however long that is.
std::unique_ptr<QLockFile> lockIn(const QString &folder)
{
    auto lock = std::make_unique<QLockFile>(QDir(folder).filePath(QStringLiteral("lock")));
    lock->setStaleLockTime(0);
    return lock;
}

bool isAbandoned(const QFileInfo &folder)
{
    // One that has just been made has none yet.
    if (!QFileInfo::exists(QDir(folder.filePath()).filePath(QStringLiteral("lock"))))
        return folder.lastModified().daysTo(QDateTime::currentDateTime()) > 1;
    return lockIn(folder.filePath())->tryLock(0);
}

} // namespace

StagingFolder::StagingFolder(QObject *parent, const QString &outputFolder)
    : QObject(parent), m_folder(newFolderIn(outputFolder))
{
    if (!m_folder.isValid())
        return;
    m_lock = lockIn(m_folder.path());
    m_lock->tryLock(0);
}

void StagingFolder::removeAbandoned(const QString &outputFolder)
{
    const QFileInfoList folders =
        QDir(hiddenFolder(outputFolder))
            .entryInfoList({QStringLiteral(".import-*")},
                           QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QFileInfo &folder : folders) {
        if (isAbandoned(folder))
            QDir(folder.filePath()).removeRecursively();
    }
}

} // namespace velmor
