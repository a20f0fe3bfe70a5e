#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QTemporaryDir>

namespace velmor {

/// A scripted engine for one test: while it lives, VELMOR_ENGINE names the program `fakeengine`,
/// and every engine that is launched follows the script. One at a time in a process.
///
/// A script has a line for each thing to do: `trigger: action text`. The trigger is a command word,
/// which the line answers, or "start". "scan#2" is the second scan only. Lines of one trigger are
/// carried out from the top. A command without a line is swallowed. "quit" and the end of input
/// end the engine. The actions:
///
///   print TEXT      one line of output; $OUTPUT is the `output.path` of the last command that
///                   had one, $DIR the folder of that, $PID the engine's process number
///   line N          a "status" event whose message is N bytes long
///   flood TEXT      this line of output without end, as fast as it goes
///   exit N, crash   ends at once, by itself or by a signal
///   ignore-term     from now on the termination request has no effect
///   read-nothing    never reads its input again
class FakeEngine {
public:
    explicit FakeEngine(const QByteArray &script);
    ~FakeEngine();
    Q_DISABLE_COPY_MOVE(FakeEngine)

    /// The path of the program.
    [[nodiscard]] static QString program();

    /// The commands that engines have read so far, in order.
    [[nodiscard]] QList<QJsonObject> received() const;

    /// The command words of `received`.
    [[nodiscard]] QList<QByteArray> receivedWords() const;

private:
    QTemporaryDir m_folder;
};

} // namespace velmor
