#include "EngineProcess.h"

#include <QJsonDocument>
#include <gtest/gtest.h>

namespace scanengine {
namespace {

/// More than the longest time that the engine grants a scanner, at the start of a page.
constexpr int patienceMilliseconds = 180'000;

} // namespace

QString inShort(const QJsonObject &event)
{
    QString text = event.value(u"event").toString();
    for (const QStringView key : {u"index", u"pages", u"message"}) {
        if (event.contains(key))
            text += u' ' + event.value(key).toVariant().toString();
    }
    return text;
}

EngineProcess::EngineProcess(const QStringList &feeders, const QProcessEnvironment &more)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(more);
    environment.insert(QStringLiteral("SCANENGINE_FEEDER"), feeders.join(u':'));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(SCANENGINE_PROGRAM), QStringList());
    EXPECT_EQ(nextInShort(), QStringLiteral("ready"));
}

EngineProcess::~EngineProcess()
{
    m_process.kill();
    m_process.waitForFinished(patienceMilliseconds);
}

void EngineProcess::send(const QJsonObject &command)
{
    sendLine(QJsonDocument(command).toJson(QJsonDocument::Compact));
}

void EngineProcess::sendLine(const QByteArray &line)
{
    m_process.write(line + '\n');
    while (m_process.bytesToWrite() > 0 && m_process.waitForBytesWritten(patienceMilliseconds)) {
    }
}

QJsonObject EngineProcess::next()
{
    while (!m_process.canReadLine()) {
        if (m_process.waitForReadyRead(patienceMilliseconds))
            continue;
        EXPECT_EQ(m_process.state(), QProcess::NotRunning) << "no event came";
        if (!m_process.canReadLine())
            return {};
    }
    const QByteArray line = m_process.readLine();
    const QJsonDocument document = QJsonDocument::fromJson(line);
    EXPECT_TRUE(document.isObject()) << line.constData();
    return document.object();
}

QString EngineProcess::nextInShort()
{
    return inShort(next());
}

QStringList EngineProcess::until(const QString &word)
{
    QStringList events;
    do {
        events.append(nextInShort());
    } while (!events.last().isEmpty() && !events.last().startsWith(word));
    return events;
}

int EngineProcess::exitCode()
{
    EXPECT_TRUE(m_process.state() == QProcess::NotRunning ||
                m_process.waitForFinished(patienceMilliseconds));
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

} // namespace scanengine
