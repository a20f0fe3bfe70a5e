#include "tests/fakeengine/FakeEngine.h"

#include <QFile>
#include <QJsonDocument>

namespace velmor {

FakeEngine::FakeEngine(const QByteArray &script)
{
    QFile file(m_folder.filePath(QStringLiteral("script")));
    if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size())
        qFatal("The script of the fake engine cannot be written.");
    QFile log(m_folder.filePath(QStringLiteral("log")));
    if (!log.open(QIODevice::WriteOnly))
        qFatal("The log of the fake engine cannot be made.");
    qputenv("FAKEENGINE_SCRIPT", QFile::encodeName(file.fileName()));
    qputenv("FAKEENGINE_LOG", QFile::encodeName(log.fileName()));
    qputenv("VELMOR_ENGINE", QFile::encodeName(program()));
}

FakeEngine::~FakeEngine()
{
    for (const char *name : {"FAKEENGINE_SCRIPT", "FAKEENGINE_LOG", "VELMOR_ENGINE"})
        qunsetenv(name);
}

QString FakeEngine::program()
{
    return QStringLiteral(FAKEENGINE_PROGRAM);
}

QList<QJsonObject> FakeEngine::received() const
{
    QList<QJsonObject> commands;
    QFile log(m_folder.filePath(QStringLiteral("log")));
    if (!log.open(QIODevice::ReadOnly))
        return commands;
    while (!log.atEnd())
        commands.append(QJsonDocument::fromJson(log.readLine()).object());
    return commands;
}

QList<QByteArray> FakeEngine::receivedWords() const
{
    QList<QByteArray> words;
    for (const QJsonObject &command : received())
        words.append(command[u"cmd"].toString().toUtf8());
    return words;
}

} // namespace velmor
