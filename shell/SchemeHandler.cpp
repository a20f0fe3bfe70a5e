#include "shell/SchemeHandler.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>

namespace velmor {

namespace {

/// The desktop files that the list at `path` names for `type`.
QStringList listed(const QString &path, const QString &type)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList names;
    QString section;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(u'['))
            section = line;
        else if (section != u"[Removed Associations]" && line.section(u'=', 0, 0) == type)
            names += line.section(u'=', 1).split(u';', Qt::SkipEmptyParts);
    }
    return names;
}

} // namespace

QStringList handlerFolders()
{
    return QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation) +
           QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

bool hasSchemeHandler(const QString &scheme, const QStringList &folders)
{
    const QString type = QStringLiteral("x-scheme-handler/") + scheme;
    QStringList names;
    for (const QString &folder : folders) {
        for (const char *list : {"mimeapps.list", "mimeinfo.cache"})
            names += listed(QDir(folder).filePath(QString::fromUtf8(list)), type);
    }
    return std::ranges::any_of(names, [&](const QString &name) {
        return std::ranges::any_of(
            folders, [&](const QString &folder) { return QDir(folder).exists(name); });
    });
}

} // namespace velmor
