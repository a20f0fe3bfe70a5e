#include "engine/ScanEngineClient.h"

#include "tests/Waiting.h"
#include "tests/fakeengine/FakeEngine.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <gmock/gmock.h>

#include <csignal>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

QStringList qtWarnings;

void keepWarning(QtMsgType, const QMessageLogContext &, const QString &text)
{
    qtWarnings.append(text);
}

/// A client, what came out of it, and the promise that Qt had nothing to complain about.
class ScanEngineClientTest : public testing::Test {
protected:
    ScanEngineClientTest()
    {
        qtWarnings.clear();
        m_formerHandler = qInstallMessageHandler(keepWarning);
        makeClient();
    }

    void makeClient()
    {
        events.clear();
        client = std::make_unique<ScanEngineClient>();
        QObject::connect(client.get(), &ScanEngineClient::eventReceived,
                         [this](const EngineEvent &event) { events.append(event); });
    }

    ~ScanEngineClientTest() override
    {
        client.reset();
        qInstallMessageHandler(m_formerHandler);
        EXPECT_EQ(qtWarnings, QStringList());
    }

    bool waitForEvents(qsizetype count)
    {
        return waitUntil([&] { return events.size() >= count; });
    }

    void send(const QString &word) { client->send({.cmd = word}); }

    [[nodiscard]] QList<QByteArray> eventWords() const
    {
        QList<QByteArray> words;
        for (const EngineEvent &event : events)
            words.append(event.event.toUtf8());
        return words;
    }

    std::unique_ptr<ScanEngineClient> client;
    QList<EngineEvent> events;

private:
    QtMessageHandler m_formerHandler = nullptr;
};

bool isRunning(std::optional<int> pid)
{
    return kill(pid.value(), 0) == 0;
}

TEST_F(ScanEngineClientTest, WithoutAnEngineNothingStarts)
{
    send(QStringLiteral("listDevices"));
    EXPECT_EQ(client->start({}), QStringLiteral("scanengine executable not found in bundle"));
    send(QStringLiteral("listDevices"));
    client->stop();
}

TEST_F(ScanEngineClientTest, CommandsMayBeSentAtOnceAndAreAnsweredInOrder)
{
    const FakeEngine engine("start: print {\"event\":\"ready\"}\n"
                            "listDevices: print {\"event\":\"devices\"}\n"
                            "scan: print {\"event\":\"done\"}\n");
    EXPECT_EQ(client->start(), std::nullopt);
    EXPECT_EQ(client->start(), std::nullopt);
    send(QStringLiteral("listDevices"));
    const QString path = QStringLiteral("/a b/ü\n\"x\".pdf");
    client->send({
        .cmd = QStringLiteral("scan"),
        .output = EngineCommand::Output{path, QStringLiteral("images")}
    });
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(eventWords(), ElementsAre("ready", "devices", "done"));
    EXPECT_THAT(engine.receivedWords(), ElementsAre("listDevices", "scan"));
    EXPECT_EQ(engine.received().last()[u"output"][u"path"].toString(), path);
}

TEST_F(ScanEngineClientTest, ABadLineCostsOnlyItself)
{
    const FakeEngine engine("start: print {\"event\":\"a\"}\n"
                            "start: print {\"event\":\"\xff\"}\n"
                            "start: print {\"event\":\"x\",\"pages\":\"2\"}\n"
                            "start: print\n"
                            "start: print no JSON\n"
                            "start: print {\"event\":\"b\"}\n"
                            "start: print {\"event\":\"c\"}\n");
    ASSERT_EQ(client->start(), std::nullopt);
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(eventWords(), ElementsAre("a", "b", "c"));
}

TEST_F(ScanEngineClientTest, LinesOfAnyLengthAreReadUpToTheLimit)
{
    const FakeEngine engine("start: line 50000000\n"
                            "start: line 70000000\n"
                            "start: print {\"event\":\"after\"}\n");
    ASSERT_EQ(client->start(), std::nullopt);
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(eventWords(), ElementsAre("status", "after"));
    EXPECT_EQ(events[0].message->size(), maximumMessageLength);
}

TEST_F(ScanEngineClientTest, AnEngineThatEndsIsReportedAfterItsLastEvent)
{
    for (const QByteArray end : {"exit 0", "exit 3", "crash"}) {
        SCOPED_TRACE(end.toStdString());
        const FakeEngine engine("start: line 200000\nstart: print {\"event\":\"last\"}\nstart: " +
                                end);
        makeClient();
        const QSignalSpy ends(client.get(), &ScanEngineClient::ended);
        ASSERT_EQ(client->start(), std::nullopt);
        ASSERT_TRUE(waitUntil([&] { return !ends.isEmpty(); }));
        EXPECT_THAT(eventWords(), ElementsAre("status", "last"));
        send(QStringLiteral("cancel"));
        client->stop();
        EXPECT_THAT(engine.received(), IsEmpty());
    }
}

TEST_F(ScanEngineClientTest, ARefusedLaunchIsReportedAndMayBeRepeated)
{
    const FakeEngine engine("start: print {\"event\":\"ready\"}\n");
    const QTemporaryDir folder;
    const QDir root(folder.path());
    QFile unreadable(root.filePath(QStringLiteral("scanengine")));
    ASSERT_TRUE(unreadable.open(QIODevice::WriteOnly));
    ASSERT_TRUE(root.mkpath(QStringLiteral("folder/scanengine")));
    QFile noProgram(root.filePath(QStringLiteral("text")));
    ASSERT_TRUE(noProgram.open(QIODevice::WriteOnly) && noProgram.write("\x01\x02\x03\n") == 4);
    noProgram.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    noProgram.close();

    const EnginePlaces refused[] = {
        {.resourceFolders = {root.path()}},
        {.resourceFolders = {root.filePath(QStringLiteral("folder"))}},
        {.chosenProgram = noProgram.fileName()},
    };
    QSignalSpy failures(client.get(), &ScanEngineClient::launchFailed);
    const QSignalSpy ends(client.get(), &ScanEngineClient::ended);
    for (const EnginePlaces &places : refused) {
        failures.clear();
        ASSERT_EQ(client->start(places), std::nullopt);
        send(QStringLiteral("listDevices"));
        ASSERT_TRUE(failures.wait(30'000));
        EXPECT_EQ(failures.size(), 1);
        EXPECT_FALSE(failures[0][0].toString().isEmpty());
        send(QStringLiteral("listDevices"));
    }
    ASSERT_EQ(client->start(), std::nullopt);
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(ends, IsEmpty());
    EXPECT_THAT(engine.received(), IsEmpty());
}

TEST_F(ScanEngineClientTest, AfterStopNothingIsDelivered)
{
    const FakeEngine engine("start: ignore-term\n"
                            "start: print {\"event\":\"first\"}\n"
                            "start: print {\"event\":\"second\"}\n"
                            "start: print {\"event\":\"third\"}\n");
    const QSignalSpy ends(client.get(), &ScanEngineClient::ended);
    QObject::connect(client.get(), &ScanEngineClient::eventReceived, [this] {
        if (events.size() == 2)
            client->stop();
    });
    ASSERT_EQ(client->start(), std::nullopt);
    ASSERT_TRUE(waitUntil([&] { return engine.receivedWords().contains("quit"); }));
    QCoreApplication::processEvents();
    EXPECT_THAT(eventWords(), ElementsAre("first", "second"));
    EXPECT_THAT(ends, IsEmpty());
}

TEST_F(ScanEngineClientTest, AFloodLeavesTheEventLoopItsTurnsAndCanBeStopped)
{
    const FakeEngine engine("start: print {\"event\":\"ready\",\"pages\":$PID}\n"
                            "start: flood {\"event\":\"status\",\"message\":\"on and on\"}\n");
    ASSERT_EQ(client->start(), std::nullopt);
    ASSERT_TRUE(waitForEvents(10'000));
    QTimer timer;
    timer.start(1);
    QSignalSpy ticks(&timer, &QTimer::timeout);
    ASSERT_TRUE(waitUntil([&] { return ticks.size() >= 20; }));

    client->stop();
    const qsizetype delivered = events.size();
    const std::optional<int> pid = events.first().pages;
    // Gone from the process table only when the event loop has seen its end.
    EXPECT_TRUE(waitUntil([&] { return !isRunning(pid); }));
    EXPECT_EQ(events.size(), delivered);
}

TEST_F(ScanEngineClientTest, AStubbornEngineDoesNotOutliveTheClient)
{
    for (const QByteArray last : {"read-nothing", "flood {\"event\":\"status\"}"}) {
        SCOPED_TRACE(last.toStdString());
        const FakeEngine engine("start: ignore-term\n"
                                "start: print {\"event\":\"ready\",\"pages\":$PID}\n"
                                "start: " +
                                last);
        makeClient();
        ASSERT_EQ(client->start(), std::nullopt);
        ASSERT_TRUE(waitForEvents(1));
        const std::optional<int> pid = events.first().pages;
        EXPECT_TRUE(isRunning(pid));
        client.reset();
        EXPECT_FALSE(isRunning(pid));
    }
}

TEST_F(ScanEngineClientTest, OnlyABoundedAmountWaitsForAnEngineThatDoesNotRead)
{
    const FakeEngine engine("ping: print {\"event\":\"pong\"}\n");
    ASSERT_EQ(client->start(), std::nullopt);
    const QString word(10'000, u'x');
    for (int i = 0; i < 1000; ++i)
        send(word);
    // The first "ping" that finds room again comes after all that waited.
    ASSERT_TRUE(waitUntil(
        [&] {
            send(QStringLiteral("ping"));
            return !events.isEmpty();
        },
        30'000));
    const qsizetype kept = engine.receivedWords().count(word.toUtf8());
    EXPECT_LE(kept * word.size(), ScanEngineClient::maximumPendingBytes);
    EXPECT_GE(kept, 100);
}

} // namespace
} // namespace velmor
