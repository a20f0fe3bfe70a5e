#include "SaneEngineFixture.h"

#include <gmock/gmock.h>

namespace scanengine {
namespace {

const QString waiting = QStringLiteral("status Waiting for paper…");

/// A scanner, and what is done to it while a batch waits for more.
struct WaitCase {
    const char *name;
    BadScanner first;
    int pagesAtFirst;
    BadScanner then;
};

void PrintTo(const WaitCase &testCase, std::ostream *stream)
{
    *stream << testCase.name;
}

class SaneBatchTest : public SaneEngineTest, public testing::WithParamInterface<WaitCase> {};

TEST_P(SaneBatchTest, GoesOnWithWhatComesUntilItIsCancelled)
{
    startBad(GetParam().first);
    m_engine->send(batchScan());
    const QStringList before = m_engine->until(waiting);
    EXPECT_EQ(before.count(QStringLiteral("scanStarted")), 1);
    EXPECT_EQ(before.size(), 2 + GetParam().pagesAtFirst);
    m_scanners->setBad(GetParam().then);
    const int pages = GetParam().pagesAtFirst + 1;
    EXPECT_EQ(m_engine->until(waiting),
              (QStringList{QStringLiteral("page %1").arg(pages), waiting}));
    m_engine->send(cancelCommand);
    EXPECT_EQ(m_engine->nextInShort(), QStringLiteral("done %1").arg(pages));
}

INSTANTIATE_TEST_SUITE_P(
    Waiting, SaneBatchTest,
    testing::Values(
        WaitCase{
            "ByTheFeedersSensor",
            {.sheets = 2, .hasSensor = true},
            2,
            {.sheets = 3, .hasSensor = true}
},
        WaitCase{"ByTryingTheFeeder", {.sheets = 2}, 2, {.sheets = 3}},
        WaitCase{"ByTheFlatbedsButton",
                 {.hasFeeder = false, .presses = 0},
                 1,
                 {.hasFeeder = false, .presses = 1}},
        WaitCase{"ForTheFeederAfterTheFlatbed",
                 {.sheets = 0, .hasSensor = true},
                 1,
                 {.sheets = 1, .hasSensor = true}},
        WaitCase{"ForTheFeederByTryingAfterTheFlatbed", {.sheets = 0}, 1, {.sheets = 1}}),
    [](const auto &test) { return std::string(test.param.name); });

TEST_F(SaneEngineTest, ABatchOnAFlatbedThatCantTellOfMoreIsDone)
{
    startBad({.hasFeeder = false});
    m_engine->send(batchScan());
    EXPECT_EQ(m_engine->until(QStringLiteral("done")).last(), QStringLiteral("done 1"));
}

TEST_F(SaneEngineTest, AFaultWhileABatchWaitsKeepsThePages)
{
    startBad({.sheets = 2});
    m_engine->send(batchScan());
    m_engine->until(waiting);
    m_scanners->setFault(QStringLiteral("crash start"));
    const QStringList end = m_engine->until(QStringLiteral("done"));
    EXPECT_EQ(end, (QStringList{QStringLiteral("status ") +
                                    withSavedPages(troubleText(WorkerTrouble::crashed), 2),
                                QStringLiteral("done 2")}));
}

} // namespace
} // namespace scanengine
