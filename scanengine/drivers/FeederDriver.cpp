#include "scanengine/drivers/FeederDriver.h"

#include "scanengine/drivers/FeederSession.h"

#include <QDir>
#include <QFileInfo>

namespace scanengine {

namespace {

QString idOf(const QString &folder)
{
    return QStringLiteral("feeder:") + folder;
}

QString nameOf(const QString &folder)
{
    const QString name = QDir(folder).dirName();
    return name.isEmpty() ? folder : name;
}

} // namespace

const QString FeederDriver::driverName = QStringLiteral("feeder");

FeederDriver::FeederDriver(const QStringList &folders)
{
    for (const QString &folder : folders) {
        if (!folder.isEmpty())
            m_folders.append(QDir::cleanPath(QDir(folder).absolutePath()));
    }
}

bool FeederDriver::owns(const QString &id) const
{
    return id.startsWith(idOf(QString()));
}

QList<Device> FeederDriver::devices(const std::stop_token &)
{
    return knownDevices();
}

QList<Device> FeederDriver::knownDevices() const
{
    QList<Device> devices;
    for (const QString &folder : presentFolders())
        devices.append({idOf(folder), nameOf(folder), driverName});
    return devices;
}

OpenResult FeederDriver::open(const QString &id, const CaptureSettings &settings,
                              const TellStatus &, const std::stop_token &)
{
    for (const QString &folder : presentFolders()) {
        if (idOf(folder) != id)
            continue;
        if (QFileInfo(folder).canonicalFilePath() ==
            QFileInfo(settings.outputFolder).canonicalFilePath())
            return Fault{QStringLiteral("Scans can't be saved in the feeder's own folder \"%1\". "
                                        "Choose another folder for them.")
                             .arg(folder)};
        return std::make_unique<FeederSession>(folder, settings);
    }
    return Fault{
        QStringLiteral("That feeder's folder is no longer there. Look for scanners again.")};
}

/// The folders that exist, each once.
QStringList FeederDriver::presentFolders() const
{
    QStringList present;
    for (const QString &folder : m_folders) {
        if (QFileInfo(folder).isDir() && !present.contains(folder))
            present.append(folder);
    }
    return present;
}

} // namespace scanengine
