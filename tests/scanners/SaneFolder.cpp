#include "tests/scanners/SaneFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace scanengine {

SaneFolder::SaneFolder(const QByteArray &backend, const QByteArray &settings)
{
    EXPECT_TRUE(QDir(m_folder.path()).mkdir(QStringLiteral("dll.d")));
    write("dll.conf", backend + '\n');
    write(backend + ".conf", settings);
}

void SaneFolder::write(const QByteArray &name, const QByteArray &content) const
{
    QFile file(m_folder.filePath(QString::fromUtf8(name)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

QProcessEnvironment SaneFolder::environment() const
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("SANE_CONFIG_DIR"), m_folder.path());
    return environment;
}

QByteArray airscanSettings(const QString &url)
{
    return "[devices]\n\"Acme Page\" = " + url.toUtf8() + "\n[options]\ndiscovery = disable\n";
}

} // namespace scanengine
