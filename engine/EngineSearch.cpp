#include "engine/EngineSearch.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace velmor {
namespace {

const QLatin1StringView programName("scanengine");
const QLatin1StringView bundledProgram("scanengine.app/Contents/MacOS/scanengine");

std::optional<QString> executableFile(const QString &path)
{
    const QFileInfo info(path);
    if (path.isEmpty() || !info.isFile() || !info.isExecutable())
        return {};
    return info.absoluteFilePath();
}

std::optional<QString> firstExecutable(const QString &folder, QLatin1StringView first,
                                       QLatin1StringView second)
{
    const QDir directory(folder);
    if (const auto path = executableFile(directory.filePath(first)))
        return path;
    return executableFile(directory.filePath(second));
}

std::optional<QString> findInResources(const QStringList &folders)
{
    for (const QString &folder : folders) {
        if (const auto path = executableFile(QDir(folder).filePath(bundledProgram)))
            return path;
    }
    for (const QString &folder : folders) {
        const QFileInfo info(QDir(folder).filePath(programName));
        if (info.exists())
            return info.absoluteFilePath();
    }
    return {};
}

std::optional<QString> findInDeveloperFolder(const QString &home)
{
    const QDir folder(QDir(home).filePath(QStringLiteral("_Coding/VELMOR/engine")));
    if (const auto path = firstExecutable(folder.path(), bundledProgram, programName))
        return path;
    const QStringList entries =
        folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        const auto path = firstExecutable(
            folder.filePath(entry), QLatin1StringView("Contents/MacOS/scanengine"), programName);
        if (path)
            return path;
    }
    return {};
}

} // namespace

EnginePlaces enginePlaces()
{
    const QDir folder(QCoreApplication::applicationDirPath());
    return {
        .chosenProgram = qEnvironmentVariable("VELMOR_ENGINE"),
        .resourceFolders = {QDir::cleanPath(folder.filePath(QStringLiteral("../libexec/velmor"))),
                            QDir::cleanPath(folder.filePath(QStringLiteral("../lib/velmor"))),
                            folder.path()},
        .home = QDir::homePath(),
    };
}

std::optional<QString> findEngine(const EnginePlaces &places)
{
    if (const auto path = executableFile(places.chosenProgram))
        return path;
    QStringList folders = places.resourceFolders;
    folders.removeAll(QString());
    if (const auto path = findInResources(folders))
        return path;
    if (places.home.isEmpty())
        return {};
    return findInDeveloperFolder(places.home);
}

} // namespace velmor
