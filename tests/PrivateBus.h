#pragma once

#include "tests/Waiting.h"

#include <QDBusConnection>
#include <QProcess>

namespace velmor {

/// A message bus of its own, with a connection for the services that a test stands in for. It ends
/// with the object.
class PrivateBus {
public:
    PrivateBus()
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--print-address=1")});
        waitUntil([this] {
            m_address += m_daemon.readAllStandardOutput();
            return m_address.endsWith('\n') || m_daemon.state() == QProcess::NotRunning;
        });
        m_address = m_address.trimmed();
        m_connection =
            QDBusConnection::connectToBus(QString::fromUtf8(m_address), QStringLiteral("services"));
    }
    ~PrivateBus()
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("services"));
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// For DBUS_SESSION_BUS_ADDRESS.
    [[nodiscard]] const QByteArray &address() const { return m_address; }
    /// For signals.
    [[nodiscard]] QDBusConnection connection() const { return m_connection; }

    /// Makes the slots and properties of `object` a service. False if the bus won't have it.
    bool offer(const char *service, const char *path, QObject &object)
    {
        return m_connection.registerObject(QString::fromUtf8(path), &object,
                                           QDBusConnection::ExportAllSlots |
                                               QDBusConnection::ExportAllProperties) &&
               m_connection.registerService(QString::fromUtf8(service));
    }

private:
    QProcess m_daemon;
    QByteArray m_address;
    QDBusConnection m_connection{QString()};
};

} // namespace velmor
