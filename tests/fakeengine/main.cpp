// A scanner engine that does what a script says, for tests of everything that talks to one.
// FakeEngine.h describes the script.

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

/// One line of the script.
struct Step {
    QByteArray trigger;
    QByteArray action;
    QByteArray text;
};

void writeOut(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

QByteArray readWholeFile(const QByteArray &path)
{
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// `text` cut in two at the first `mark`, both halves trimmed.
std::pair<QByteArray, QByteArray> halves(const QByteArray &text, const QByteArray &mark)
{
    const qsizetype at = text.indexOf(mark);
    if (at < 0)
        return {text.trimmed(), QByteArray()};
    return {text.left(at).trimmed(), text.mid(at + mark.size()).trimmed()};
}

QList<Step> readScript(const QByteArray &path)
{
    QList<Step> steps;
    for (const QByteArray &line : readWholeFile(path).split('\n')) {
        if (line.isEmpty())
            continue;
        const auto [trigger, rest] = halves(line, ":");
        const auto [action, text] = halves(rest, " ");
        steps.append({trigger, action, text});
    }
    return steps;
}

class Engine {
public:
    explicit Engine(QList<Step> steps) : m_steps(std::move(steps)) {}

    void run()
    {
        trigger("start");
        for (std::string line; std::getline(std::cin, line);)
            receive(QByteArray::fromStdString(line));
    }

private:
    void receive(const QByteArray &line)
    {
        log(line);
        const QJsonObject command = QJsonDocument::fromJson(line).object();
        const QString path = command[u"output"][u"path"].toString();
        if (!path.isEmpty()) {
            m_output = QFile::encodeName(path);
            m_folder = QFile::encodeName(QFileInfo(path).path());
        }
        const QByteArray word = command[u"cmd"].toString().toUtf8();
        trigger(word);
        if (word == "quit")
            std::exit(0);
    }

    void trigger(const QByteArray &word)
    {
        const QByteArray counted = word + '#' + QByteArray::number(++m_counts[word]);
        for (const Step &step : m_steps) {
            if (step.trigger == word || step.trigger == counted)
                perform(step);
        }
    }

    void perform(const Step &step)
    {
        const QByteArray &action = step.action;
        if (action == "print")
            writeOut(filledIn(step.text) + '\n');
        else if (action == "line")
            writeOut(R"({"event":"status","message":")" + QByteArray(step.text.toLongLong(), 'x') +
                     "\"}\n");
        else if (action == "flood")
            flood(step.text + '\n');
        else if (action == "exit")
            std::_Exit(step.text.toInt());
        else if (action == "crash")
            std::raise(SIGKILL);
        else if (action == "ignore-term")
            std::signal(SIGTERM, SIG_IGN);
        else if (action == "read-nothing")
            for (;;)
                pause();
        else
            fail(action);
    }

    QByteArray filledIn(QByteArray text) const
    {
        return text.replace("$OUTPUT", m_output)
            .replace("$DIR", m_folder)
            .replace("$PID", QByteArray::number(getpid()));
    }

    [[noreturn]] static void flood(const QByteArray &line)
    {
        const QByteArray lines = line.repeated(1000);
        while (true)
            writeOut(lines);
    }

    [[noreturn]] static void fail(const QByteArray &what)
    {
        writeOut(R"({"event":"error","message":"fakeengine cannot do: )" + what + "\"}\n");
        std::exit(2);
    }

    static void log(const QByteArray &line)
    {
        QFile file(QFile::decodeName(qgetenv("FAKEENGINE_LOG")));
        // A log that is gone belongs to a test that is over, and its folder must stay removable.
        if (file.open(QIODevice::Append | QIODevice::ExistingOnly))
            file.write(line + '\n');
    }

    QList<Step> m_steps;
    QHash<QByteArray, int> m_counts;
    QByteArray m_output;
    QByteArray m_folder;
};

} // namespace

int main()
{
    Engine(readScript(qgetenv("FAKEENGINE_SCRIPT"))).run();
    return 0;
}
