#include "model/UndoFolder.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <sys/stat.h>
#include <unistd.h>

namespace velmor {

namespace {

/// Makes the folder if it isn't there. Whether it then is a folder, not a link to one, that belongs
/// to this user and nobody else can enter: others may have made something of that name first.
bool isOurs(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    mkdir(name.constData(), S_IRWXU);
    struct stat folder{};
    return lstat(name.constData(), &folder) == 0 && S_ISDIR(folder.st_mode) &&
           folder.st_uid == geteuid() && (folder.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

} // namespace

std::optional<QString> newBackupPath()
{
    const QDir temporary = QDir::temp();
    const QString usual = temporary.filePath(QStringLiteral("velmor-undo"));
    // For where the usual one is another user's.
    const QString own = usual + u'-' + QString::number(geteuid());
    for (const QString &folder : {usual, own}) {
        if (isOurs(folder)) {
            const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
            return QDir(folder).filePath(name + QStringLiteral(".pdf"));
        }
    }
    return {};
}

} // namespace velmor
