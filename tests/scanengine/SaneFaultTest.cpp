#include "SaneDriverFixture.h"
#include "tests/Waiting.h"

#include <csignal>

namespace scanengine {
namespace {

using namespace std::chrono_literals;

class SaneFaultTest : public SaneDriverTest {};

TEST_F(SaneFaultTest, FaultsAtAnyStepAreToldAndTheNextScanWorks)
{
    const struct {
        const char *fault;
        const char *place;
        std::chrono::milliseconds SaneLimits::*limit;
        WorkerTrouble trouble;
    } cases[] = {
        {"crash", "open",   nullptr,            WorkerTrouble::crashed    },
        {"crash", "option", nullptr,            WorkerTrouble::crashed    },
        {"crash", "start",  nullptr,            WorkerTrouble::crashed    },
        {"crash", "page",   nullptr,            WorkerTrouble::crashed    },
        {"hang",  "open",   &SaneLimits::open,  WorkerTrouble::hungAtOpen },
        {"hang",  "start",  &SaneLimits::start, WorkerTrouble::hungAtStart},
        {"hang",  "page",   &SaneLimits::data,  WorkerTrouble::hungInPage },
#ifndef __SANITIZE_ADDRESS__
        {"leak",  "page",   nullptr,            WorkerTrouble::crashed    },
#endif
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.fault << ' ' << c.place);
        SaneLimits limits = usualLimits;
        if (c.limit) {
            limits.*c.limit = soon;
            limits.release = inVain;
        }
        useBad(limits);
        const QString id = idOf("Bad");
        m_scanners->setFault(QLatin1StringView(c.fault) + u' ' + QLatin1StringView(c.place));

        std::string message;
        {
            OpenResult opened = open(id);
            message = messageOf(opened);
            auto *session = std::get_if<std::unique_ptr<ScanSession>>(&opened);
            for (int sheet = 0; session && message == "no fault" && sheet < 2; ++sheet) {
                message = messageOf(feed(**session));
                if (message == "no fault")
                    message = messageOf(read(**session));
            }
        }
        EXPECT_EQ(message, textOf(c.trouble));

        m_scanners->setFault(QString());
        const auto next = begin(id);
        ASSERT_TRUE(next);
        EXPECT_TRUE(std::holds_alternative<QImage>(read(*next)));
    }
}

TEST_F(SaneFaultTest, AWorkerKilledOrStoppedInAPageCostsThatPageAlone)
{
    SaneLimits limits = usualLimits;
    limits.data = soon;
    limits.release = inVain;
    const struct {
        int signal;
        WorkerTrouble trouble;
    } cases[] = {
        {SIGKILL, WorkerTrouble::crashed   },
        {SIGSTOP, WorkerTrouble::hungInPage},
    };
    use(
        {
            {"read-delay",          "true"  },
            {"read-delay-duration", "200000"}
    },
        {QStringLiteral("test")}, limits);
    m_settings.dpi = 600;
    const QString id = idOf("tester");
    for (const auto &c : cases) {
        const auto session = begin(id);
        ASSERT_TRUE(session);
        ASSERT_EQ(::kill(worker(), c.signal), 0);
        EXPECT_EQ(messageOf(read(*session)), textOf(c.trouble));
    }
    EXPECT_TRUE(begin(id));
}

TEST_F(SaneFaultTest, AWorkerKilledOrStoppedAtTheStartIsAFault)
{
    SaneLimits limits = usualLimits;
    limits.option = soon;
    limits.release = inVain;
    use({}, {QStringLiteral("test")}, limits);
    const QString id = idOf("tester");
    for (const int signal : {SIGKILL, SIGSTOP}) {
        const OpenResult opened = open(id);
        ASSERT_TRUE(std::holds_alternative<std::unique_ptr<ScanSession>>(opened));
        ASSERT_EQ(::kill(worker(), signal), 0);
        const FeedResult fed = feed(*std::get<std::unique_ptr<ScanSession>>(opened));
        EXPECT_EQ(messageOf(fed),
                  textOf(signal == SIGKILL ? WorkerTrouble::crashed : WorkerTrouble::hungAtOpen));
    }
}

TEST_F(SaneFaultTest, ADeviceIsLetGoAlsoByOneThatHangsAtThat)
{
    SaneLimits limits = usualLimits;
    limits.release = soon;
    limits.untold = 10ms;
    for (const char *fault : {"", "hang cancel"}) {
        useBad(limits);
        const QString id = idOf("Bad");
        auto session = begin(id);
        ASSERT_TRUE(session);
        m_scanners->setFault(QLatin1StringView(fault));
        const pid_t process = worker();
        session.reset();
        if (qstrlen(fault) > 0) {
            EXPECT_TRUE(begin(id));
            EXPECT_EQ(m_told, QStringList{waitingForBusyText()});
        }
        EXPECT_TRUE(velmor::waitUntil([&] { return hasEnded(process); }));
        EXPECT_EQ(m_scanners->wasClosed(), qstrlen(fault) == 0);
        m_scanners->setFault(QString());
        EXPECT_TRUE(begin(id));
    }
}

} // namespace
} // namespace scanengine
