#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

namespace scanengine {

/// An event in short: "page 2", "done 3", "status …", "error …", else the word alone.
[[nodiscard]] QString inShort(const QJsonObject &event);

/// The engine program under test, with its own feeder folders. Every wait is bounded and fails the
/// test when it is over.
class EngineProcess {
public:
    /// `environment` is what the engine has beyond that of the test.
    explicit EngineProcess(const QStringList &feeders,
                           const QProcessEnvironment &environment = QProcessEnvironment());
    ~EngineProcess();
    EngineProcess(const EngineProcess &) = delete;
    EngineProcess &operator=(const EngineProcess &) = delete;

    void send(const QJsonObject &command);
    void sendLine(const QByteArray &line);
    void endInput() { m_process.closeWriteChannel(); }
    void kill() { m_process.kill(); }
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }

    /// The next event, or an empty object at the end of the output.
    [[nodiscard]] QJsonObject next();

    /// The next event in short.
    [[nodiscard]] QString nextInShort();

    /// All events in short up to and with the next one that begins with `word`.
    QStringList until(const QString &word);

    /// Waits for the end of the process and answers its exit code, -1 for a crash.
    [[nodiscard]] int exitCode();

private:
    QProcess m_process;
};

} // namespace scanengine
