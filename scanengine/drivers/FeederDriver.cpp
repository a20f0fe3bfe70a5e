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

QList<Device> FeederDriver::devices()
{
    QList<Device> devices;
    for (const QString &folder : presentFolders())
        devices.append({idOf(folder), nameOf(folder), driverName});
    return devices;
}

Result<std::unique_ptr<ScanSession>> FeederDriver::open(const QString &id,
                                                        const CaptureSettings &settings)
{
    for (const QString &folder : presentFolders()) {
        if (idOf(folder) != id)
            continue;
        if (QFileInfo(folder).canonicalFilePath() ==
            QFileInfo(settings.outputFolder).canonicalFilePath())
            return Fault{QStringLiteral("Scans can't be saved in the feeder's own folder \"%1\". "
                                        "Choose another folder for them.")
                             .arg(folder)};
        return std::unique_ptr<ScanSession>(std::make_unique<FeederSession>(folder, settings));
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
