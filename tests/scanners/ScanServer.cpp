#include "tests/scanners/ScanServer.h"

#include "tests/Waiting.h"

#include <QCoreApplication>
#include <QTcpSocket>
#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

namespace scanengine {
namespace {

/// The port that SANE's clients ask.
constexpr quint16 port = 6566;

/// An address of this computer that no other process of its time picks.
QString ownAddress()
{
    const auto id = QCoreApplication::applicationPid();
    constexpr int perByte = 254;
    return QStringLiteral("127.%1.%2.%3")
        .arg(1 + id / perByte / perByte % perByte)
        .arg(1 + id / perByte % perByte)
        .arg(1 + id % perByte);
}

bool answers(const QString &host)
{
    constexpr int boundMs = 1000;
    QTcpSocket socket;
    socket.connectToHost(host, port);
    return socket.waitForConnected(boundMs);
}

} // namespace

ScanServer::ScanServer(const QByteArray &testSettings)
    : m_folder("test", testSettings), m_host(ownAddress())
{
    m_folder.write("saned.conf", "127.0.0.0/8\n");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(m_folder.environment());
    m_process.setProcessEnvironment(environment);
    // It serves each client by a process of its own: all of them are ended as one group.
    m_process.setChildProcessModifier([] { ::setpgid(0, 0); });
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(QStringLiteral(SANED_PROGRAM),
                    {QStringLiteral("-l"), QStringLiteral("-e"), QStringLiteral("-b"), m_host});
    EXPECT_TRUE(velmor::waitUntil([this] { return answers(m_host); }));
}

ScanServer::~ScanServer()
{
    kill();
}

void ScanServer::kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    ::kill(-pid_t(m_process.processId()), SIGKILL);
    m_process.waitForFinished();
}

} // namespace scanengine
