#include "model/FileMove.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmor {

namespace {

/// As `renameat2` without replacing, on file systems that can't do that. Links are as safe, and
/// where there are none either, a look before the move has to do.
int renameSlowly(const char *from, const char *to)
{
    if (link(from, to) == 0) {
        if (unlink(from) == 0 || errno == ENOENT)
            return 0;
        const int problem = errno;
        unlink(to);
        errno = problem;
        return -1;
    }
    if (errno == EEXIST)
        return -1;
    struct stat there{};
    if (lstat(to, &there) == 0) {
        errno = EEXIST;
        return -1;
    }
    return rename(from, to);
}

/// Whether a folder lists a name in exactly this spelling.
bool isListed(const QString &path)
{
    const QFileInfo file(path);
    return file.dir()
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System)
        .contains(file.fileName());
}

bool isSameFile(const char *one, const char *other)
{
    struct stat first{};
    struct stat second{};
    return lstat(one, &first) == 0 && lstat(other, &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

} // namespace

FileMove moveFile(const QString &from, const QString &to)
{
    const QByteArray fromName = QFile::encodeName(from);
    const QByteArray toName = QFile::encodeName(to);
    const char *source = fromName.constData();
    const char *target = toName.constData();
    int failed = renameat2(AT_FDCWD, source, AT_FDCWD, target, RENAME_NOREPLACE);
    if (failed && (errno == EINVAL || errno == ENOSYS))
        failed = renameSlowly(source, target);
    if (!failed)
        return FileMove::done;
    if (errno != EEXIST)
        return FileMove::failed;
    // Two names of one file, rather than two spellings of one name, stay: rename() would do
    // nothing.
    if (from.compare(to, Qt::CaseInsensitive) != 0 || !isSameFile(source, target) ||
        (isListed(from) && isListed(to)))
        return FileMove::taken;
    return rename(source, target) == 0 ? FileMove::done : FileMove::failed;
}

} // namespace velmor
