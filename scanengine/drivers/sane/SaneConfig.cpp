#include "scanengine/drivers/sane/SaneConfig.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace scanengine {
namespace {

const QString mainFile = QStringLiteral("dll.conf");
const QString extraFolder = QStringLiteral("dll.d");

/// Where SANE looks when nothing else is set.
const QStringList defaultFolders{QStringLiteral("."), QStringLiteral("/etc/sane.d")};

/// Longest configuration file that is read, in bytes.
constexpr qint64 longestFile = 1024 * 1024;

void appendBackendsIn(const QString &path, QStringList &backends)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QString content = QString::fromUtf8(file.read(longestFile));
    for (const QString &line : content.split(u'\n')) {
        const QString name = line.section(u'#', 0, 0).simplified().section(u' ', 0, 0);
        if (!name.isEmpty() && !backends.contains(name))
            backends.append(name);
    }
}

bool isBackup(const QString &name)
{
    return name.endsWith(u'~') || name.endsWith(u'#');
}

} // namespace

QStringList saneConfigFolders(const QString &setting)
{
    if (setting.isEmpty())
        return defaultFolders;
    QStringList folders = setting.split(u':', Qt::SkipEmptyParts);
    if (setting.endsWith(u':'))
        folders += defaultFolders;
    return folders;
}

QStringList configuredBackends(const QStringList &folders)
{
    QStringList backends;
    for (const QString &folder : folders) {
        if (QFile::exists(QDir(folder).filePath(mainFile))) {
            appendBackendsIn(QDir(folder).filePath(mainFile), backends);
            break;
        }
    }
    for (const QString &folder : folders) {
        const QDir extras(QDir(folder).filePath(extraFolder));
        if (!extras.exists())
            continue;
        for (const QString &name : extras.entryList(QDir::Files)) {
            if (!isBackup(name))
                appendBackendsIn(extras.filePath(name), backends);
        }
        break;
    }
    return backends;
}

QStringList scannerBackends(const QStringList &configured)
{
    static const QStringList cameras{QStringLiteral("v4l"),   QStringLiteral("gphoto2"),
                                     QStringLiteral("dc210"), QStringLiteral("dc240"),
                                     QStringLiteral("dc25"),  QStringLiteral("qcam"),
                                     QStringLiteral("stv680")};
    const bool hasAirscan = configured.contains(QStringLiteral("airscan"));
    QStringList backends;
    for (const QString &name : configured) {
        if (!cameras.contains(name) && !(hasAirscan && name == u"escl"))
            backends.append(name);
    }
    return backends;
}

bool isNetworkBackend(const QString &backend)
{
    return backend == u"airscan" || backend == u"escl" || backend == u"net" ||
           backend == u"dell1600n_net";
}

QString backendOf(const QString &deviceName)
{
    return deviceName.section(u':', 0, 0);
}

OneBackendConfig::OneBackendConfig(const QString &setting)
    : m_folder(std::make_unique<QTemporaryDir>()), m_setting(m_folder->path() + u':' + setting)
{
    // Beside the empty folder SANE looks into no other one for further backends.
    QDir(m_folder->path()).mkdir(extraFolder);
}

OneBackendConfig::~OneBackendConfig() = default;

bool OneBackendConfig::choose(const QString &backend)
{
    QFile file(m_folder->filePath(mainFile));
    const QByteArray line = backend.toUtf8() + '\n';
    return file.open(QIODevice::WriteOnly) && file.write(line) == line.size() && file.flush();
}

} // namespace scanengine
