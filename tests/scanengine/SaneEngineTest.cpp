#include "EngineProcess.h"
#include "TestImages.h"
#include "TestScanners.h"
#include "tests/Waiting.h"

#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <csignal>
#include <optional>

namespace scanengine {
namespace {

const QJsonObject listDevices{
    {QStringLiteral("cmd"), QStringLiteral("listDevices")}
};
const QJsonObject cancel{
    {QStringLiteral("cmd"), QStringLiteral("cancel")}
};
const QJsonObject quitCommand{
    {QStringLiteral("cmd"), QStringLiteral("quit")}
};

/// The engine program with SANE's scanners.
class SaneEngineTest : public testing::Test {
protected:
    void start(std::initializer_list<TestScanners::Setting> settings,
               const QStringList &backends = {QStringLiteral("test")})
    {
        m_scanners.emplace(settings, backends);
        QProcessEnvironment environment = m_scanners->launch().environment;
        environment.insert(QStringLiteral("SCANENGINE_WORKER"), QStringLiteral(SCANWORKER_PROGRAM));
        environment.insert(QStringLiteral("SCANENGINE_LOG"), logFile());
        m_engine.emplace(QStringList(), environment);
    }

    /// With pages that take minutes.
    void startSlow()
    {
        start({
            {"read-delay",          "true"  },
            {"read-delay-duration", "200000"}
        });
    }

    [[nodiscard]] QJsonObject scan(int dpi) const
    {
        return {
            {QStringLiteral("cmd"),       QStringLiteral("scan")                              },
            {QStringLiteral("dpi"),       dpi                                                 },
            {QStringLiteral("colorMode"), QStringLiteral("gray")                              },
            {QStringLiteral("output"),
             QJsonObject{{QStringLiteral("path"), m_folder.filePath(QStringLiteral("a.pdf"))}}}
        };
    }

    [[nodiscard]] QString logFile() const { return m_folder.filePath(QStringLiteral("log")); }

    [[nodiscard]] pid_t worker() const
    {
        const QList<pid_t> workers = workersOf(pid_t(m_engine->processId()));
        EXPECT_EQ(workers.size(), 1);
        return workers.value(0, -1);
    }

    QTemporaryDir m_folder;
    std::optional<TestScanners> m_scanners;
    std::optional<EngineProcess> m_engine;
};

TEST_F(SaneEngineTest, ScansAFeederAndLogsNothingIntoTheEvents)
{
    start({});
    m_engine->send(scan(75));
    EXPECT_EQ(m_engine->nextInShort(), QStringLiteral("scanStarted"));
    for (int page = 1; page <= 10; ++page)
        EXPECT_EQ(m_engine->nextInShort(), QStringLiteral("page %1").arg(page));
    const QJsonObject done = m_engine->next();
    ASSERT_EQ(done.value(u"pages"), 10);
    const QImage page(done.value(u"files")[9].toString());
    EXPECT_EQ(page.dotsPerMeterX(), qRound(75 / 0.0254));
    EXPECT_EQ(greyLevel(page), 255);

    m_engine->send(quitCommand);
    EXPECT_EQ(m_engine->exitCode(), 0);
    QFile log(logFile());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QByteArray words = log.readAll();
    EXPECT_THAT(words.toStdString(), testing::HasSubstr("[scanengine]"));
    EXPECT_THAT(words.toStdString(), testing::HasSubstr("[test] sane_close"));
}

TEST_F(SaneEngineTest, ABatchWaitsForTheFeederUntilItIsCancelled)
{
    const QString waiting = QStringLiteral("status Waiting for paper…");
    start({});
    QJsonObject batch = scan(75);
    batch[u"batchWaitForPaper"] = true;
    m_engine->send(batch);
    EXPECT_EQ(m_engine->until(waiting).size(), 12);
    EXPECT_EQ(m_engine->nextInShort(), QStringLiteral("page 11")) << "the feeder was filled again";
    EXPECT_EQ(m_engine->until(waiting).size(), 10);
    m_engine->send(cancel);
    EXPECT_EQ(m_engine->until(QStringLiteral("done")).last().left(6), QStringLiteral("done 2"));
}

TEST_F(SaneEngineTest, CancellingInAPageIsDoneAndTheNextScanBegins)
{
    startSlow();
    for (int round = 0; round < 2; ++round) {
        m_engine->send(scan(600));
        EXPECT_EQ(m_engine->nextInShort(), QStringLiteral("scanStarted"));
        m_engine->send(cancel);
        EXPECT_EQ(m_engine->nextInShort(), QStringLiteral("done 0"));
    }
}

TEST_F(SaneEngineTest, AWorkerThatDiesInAPageIsAnErrorAndTheNextCommandWorks)
{
    startSlow();
    m_engine->send(scan(600));
    EXPECT_EQ(m_engine->nextInShort(), QStringLiteral("scanStarted"));
    ASSERT_EQ(::kill(worker(), SIGKILL), 0);
    EXPECT_EQ(m_engine->nextInShort(),
              QStringLiteral("error ") + troubleText(WorkerTrouble::crashed));
    m_engine->send(listDevices);
    EXPECT_EQ(m_engine->next().value(u"devices").toArray().size(), 1);
}

TEST_F(SaneEngineTest, TheDeviceIsLetGoHoweverTheEngineEnds)
{
    enum class Ending { quit, endOfInput, kill };
    for (const Ending ending : {Ending::quit, Ending::endOfInput, Ending::kill}) {
        SCOPED_TRACE(int(ending));
        start({}, {QStringLiteral("bad")});
        m_engine->send(scan(75));
        EXPECT_EQ(m_engine->until(QStringLiteral("page 1")).size(), 2);
        const pid_t process = worker();
        if (ending == Ending::quit)
            m_engine->send(quitCommand);
        else if (ending == Ending::endOfInput)
            m_engine->endInput();
        else
            m_engine->kill();
        EXPECT_TRUE(velmor::waitUntil([&] { return hasEnded(process); }));
        EXPECT_TRUE(m_scanners->wasClosed());
    }
}

TEST_F(SaneEngineTest, PagesBeforeACrashAreSavedAndTold)
{
    start({}, {QStringLiteral("bad")});
    m_scanners->setFault(QStringLiteral("crash page"));
    m_engine->send(scan(75));
    const QStringList events = m_engine->until(QStringLiteral("done"));
    ASSERT_EQ(events.size(), 4);
    EXPECT_EQ(events[2],
              QStringLiteral("status ") + withSavedPages(troubleText(WorkerTrouble::crashed), 1));
    EXPECT_EQ(events[3], QStringLiteral("done 1"));
}

TEST_F(SaneEngineTest, WhatIsKnownIsToldAtOnceWhileASearchHangs)
{
    start({}, {QStringLiteral("test"), QStringLiteral("bad")});
    m_engine->send(listDevices);
    EXPECT_EQ(m_engine->next().value(u"devices").toArray().size(), 2);
    m_scanners->setFault(QStringLiteral("hang search"));
    m_engine->send(listDevices);
    ASSERT_TRUE(
        velmor::waitUntil([this] { return !workersOf(pid_t(m_engine->processId())).isEmpty(); }));
    const pid_t process = worker();
    for (int again = 0; again < 2; ++again) {
        m_engine->send(listDevices);
        EXPECT_EQ(m_engine->next().value(u"devices").toArray().size(), 2);
    }
    EXPECT_FALSE(hasEnded(process)) << "the search was over already";
    m_engine->send(quitCommand);
    EXPECT_EQ(m_engine->exitCode(), 0);
}

} // namespace
} // namespace scanengine
