#include "SaneEngineFixture.h"
#include "TestImages.h"
#include "tests/Waiting.h"

#include <QFile>
#include <QJsonArray>
#include <gmock/gmock.h>

#include <csignal>

namespace scanengine {
namespace {

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
    m_engine->send(batchScan());
    EXPECT_EQ(m_engine->until(waiting).size(), 12);
    EXPECT_EQ(m_engine->nextInShort(), QStringLiteral("page 11")) << "the feeder was filled again";
    EXPECT_EQ(m_engine->until(waiting).size(), 10);
    m_engine->send(cancelCommand);
    EXPECT_EQ(m_engine->until(QStringLiteral("done")).last().left(6), QStringLiteral("done 2"));
}

TEST_F(SaneEngineTest, CancellingInAPageIsDoneAndTheNextScanBegins)
{
    startSlow();
    for (int round = 0; round < 2; ++round) {
        m_engine->send(scan(600));
        EXPECT_EQ(m_engine->nextInShort(), QStringLiteral("scanStarted"));
        m_engine->send(cancelCommand);
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
    m_engine->send(listDevicesCommand);
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

TEST_F(SaneEngineTest, AfterTheAnswerOfASearchTheNextCommandSearchesAnew)
{
    startBad({});
    for (int round = 0; round < 20; ++round) {
        const QString name = QStringLiteral("feeder%1").arg(round);
        m_scanners->setBad({.name = name});
        m_engine->send(listDevicesCommand);
        EXPECT_EQ(m_engine->next().value(u"devices")[0][u"id"], QStringLiteral("bad:") + name);
    }
}

TEST_F(SaneEngineTest, ABusyScannerIsWaitedForAndTheUserIsTold)
{
    const QString busy = QStringLiteral("status ") + waitingForBusyText();
    startBad({.fault = QStringLiteral("busy open"), .sheets = 2});
    m_engine->send(scan(75));
    EXPECT_EQ(m_engine->nextInShort(), busy);
    m_scanners->setFault(QStringLiteral("busy start"));
    EXPECT_EQ(m_engine->until(busy).first(), QStringLiteral("scanStarted"));
    m_scanners->setFault({});
    EXPECT_EQ(m_engine->until(QStringLiteral("done")).last(), QStringLiteral("done 2"));
}

TEST_F(SaneEngineTest, CancellingEndsTheWaitForABusyScanner)
{
    const QString busy = QStringLiteral("status ") + waitingForBusyText();
    const std::pair<QString, QString> cases[] = {
        {QStringLiteral("busy open"),  QStringLiteral("done 0")},
        {QStringLiteral("busy start"), QStringLiteral("done 1")},
    };
    for (const auto &[fault, end] : cases) {
        startBad({.fault = fault});
        m_engine->send(scan(75));
        m_engine->until(busy);
        m_engine->send(cancelCommand);
        EXPECT_EQ(m_engine->until(QStringLiteral("done")).last(), end);
    }
}

} // namespace
} // namespace scanengine
