#include "TestImages.h"
#include "TestScanners.h"
#include "tests/Waiting.h"

#include <gmock/gmock.h>

#include <csignal>
#include <future>
#include <optional>
#include <unistd.h>

namespace scanengine {
namespace {

using namespace std::chrono_literals;

const QString testDevice = QStringLiteral("test:0");

/// Limits that never matter where nothing hangs.
constexpr SaneLimits usualLimits{.backendSearch = 20s, .wholeSearch = 30s};

/// Limits that are soon over where something hangs, and wide enough for a busy computer.
#ifdef __SANITIZE_ADDRESS__
constexpr std::chrono::milliseconds soon = 6s;
#else
constexpr std::chrono::milliseconds soon = 2s;
#endif
/// The same for a search of one backend.
constexpr std::chrono::milliseconds searchLimit = soon + 1s;
/// For a worker to let go what it never will.
constexpr std::chrono::milliseconds inVain = 50ms;

std::string nameList(const QList<Device> &devices)
{
    QStringList names;
    for (const Device &device : devices)
        names.append(device.name);
    names.sort();
    return names.join(u'|').toStdString();
}

std::string messageOf(const auto &result)
{
    const Fault *fault = faultOf(result);
    return fault ? fault->message.toStdString() : "no fault";
}

std::string textOf(WorkerTrouble trouble)
{
    return troubleText(trouble).toStdString();
}

class SaneDriverTest : public testing::Test {
protected:
    void use(std::initializer_list<TestScanners::Setting> settings,
             const QStringList &backends = {QStringLiteral("test")},
             const SaneLimits &limits = usualLimits)
    {
        m_driver.reset();
        m_told.clear();
        m_scanners.emplace(settings, backends);
        m_driver.emplace(m_scanners->launch(), limits);
    }

    /// With the backend that fails on demand.
    void useBad(const SaneLimits &limits = usualLimits)
    {
        use({}, {QStringLiteral("bad"), QStringLiteral("test")}, limits);
    }

    [[nodiscard]] QList<Device> search() { return m_driver->devices(m_stop.get_token()); }

    /// The id of the first device whose name has this in it.
    [[nodiscard]] QString idOf(const char *part)
    {
        for (const Device &device : search()) {
            if (device.name.contains(QLatin1StringView(part)))
                return device.id;
        }
        ADD_FAILURE() << "no " << part;
        return {};
    }

    [[nodiscard]] OpenResult open(const QString &id)
    {
        const auto tell = [this](const QString &message) {
            m_told.append(message);
        };
        return m_driver->open(id, m_settings, tell, m_stop.get_token());
    }

    /// A session with the first sheet moving.
    [[nodiscard]] std::unique_ptr<ScanSession> begin(const QString &id)
    {
        OpenResult opened = open(id);
        auto *session = std::get_if<std::unique_ptr<ScanSession>>(&opened);
        if (!session) {
            ADD_FAILURE() << messageOf(opened);
            return nullptr;
        }
        const FeedResult fed = feed(**session);
        EXPECT_TRUE(std::holds_alternative<SheetMoving>(fed)) << messageOf(fed);
        return std::move(*session);
    }

    [[nodiscard]] FeedResult feed(ScanSession &session)
    {
        return session.feedSheet(WhenEmpty::finish, m_stop.get_token());
    }

    [[nodiscard]] SheetResult read(ScanSession &session)
    {
        return session.readSheet(m_stop.get_token());
    }

    [[nodiscard]] static pid_t worker()
    {
        const QList<pid_t> workers = workersOf(::getpid());
        EXPECT_EQ(workers.size(), 1);
        return workers.value(0, -1);
    }

    std::optional<TestScanners> m_scanners;
    std::optional<SaneDriver> m_driver;
    CaptureSettings m_settings{.dpi = 75, .outputFolder = QStringLiteral("/tmp")};
    std::stop_source m_stop;
    QStringList m_told;
};

TEST_F(SaneDriverTest, AFeederGivesItsSheetsAndThenNoPaper)
{
    use({});
    const auto session = begin(idOf("tester"));
    ASSERT_TRUE(session);
    for (int sheet = 1; sheet <= 10; ++sheet) {
        const SheetResult read = this->read(*session);
        ASSERT_TRUE(std::holds_alternative<QImage>(read)) << messageOf(read);
        EXPECT_EQ(greyLevel(std::get<QImage>(read)), 255);
        const FeedResult next = feed(*session);
        EXPECT_EQ(std::holds_alternative<SheetMoving>(next), sheet < 10) << messageOf(next);
    }
    const FeedResult again = session->feedSheet(WhenEmpty::waitForPaper, m_stop.get_token());
    EXPECT_TRUE(std::holds_alternative<SheetMoving>(again)) << "the feeder was filled again";
}

TEST_F(SaneDriverTest, TheFlatbedGivesOnePageAndCantTellOfAnother)
{
    use({});
    m_settings.source = PaperSource::flatbed;
    const auto session = begin(idOf("tester"));
    ASSERT_TRUE(session);
    EXPECT_TRUE(std::holds_alternative<QImage>(read(*session)));
    for (const WhenEmpty whenEmpty : {WhenEmpty::finish, WhenEmpty::waitForPaper}) {
        const FeedResult fed = session->feedSheet(whenEmpty, m_stop.get_token());
        EXPECT_TRUE(std::holds_alternative<NoPaper>(fed)) << messageOf(fed);
    }
}

TEST_F(SaneDriverTest, PagesOfEveryKindComeWhole)
{
    const struct {
        const char *what;
        TestScanners::Setting setting;
        ColorMode mode;
        int width; // of 200 mm at 75 dpi, but a hand scanner's 110 mm
    } cases[] = {
        {"grey",           {"mode", "Gray"},             ColorMode::gray,  590},
        {"colour",         {"mode", "Color"},            ColorMode::color, 590},
        {"three passes",   {"three-pass", "true"},       ColorMode::color, 590},
        {"16 bits",        {"depth", "16"},              ColorMode::color, 590},
        {"1 bit",          {"depth", "1"},               ColorMode::gray,  590},
        {"unknown height", {"hand-scanner", "true"},     ColorMode::gray,  324},
        {"padded lines",   {"ppl-loss", "7"},            ColorMode::gray,  583},
        {"vague promises", {"fuzzy-parameters", "true"}, ColorMode::color, 590},
        {"small pieces",   {"read-limit", "true"},       ColorMode::gray,  590},
        {"no waiting",     {"non-blocking", "true"},     ColorMode::gray,  590},
        {"a descriptor",   {"select-fd", "true"},        ColorMode::gray,  590},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        use({
            c.setting, {"read-limit-size", "999"}
        });
        m_settings.colorMode = c.mode;
        const auto session = begin(idOf("tester"));
        ASSERT_TRUE(session);
        const SheetResult sheet = read(*session);
        ASSERT_TRUE(std::holds_alternative<QImage>(sheet)) << messageOf(sheet);
        const auto &image = std::get<QImage>(sheet);
        EXPECT_NEAR(image.width(), c.width, 1);
        EXPECT_NEAR(image.dotsPerMeterX(), 75 / 0.0254, 1);
        EXPECT_EQ(greyLevel(image), 255);
    }
}

TEST_F(SaneDriverTest, TheDevicesStatesBecomeSentences)
{
    const struct {
        const char *state;
        SaneStatus status;
    } cases[] = {
        {"\"SANE_STATUS_JAMMED\"",        SaneStatus::jammed      },
        {"\"SANE_STATUS_COVER_OPEN\"",    SaneStatus::coverOpen   },
        {"\"SANE_STATUS_ACCESS_DENIED\"", SaneStatus::accessDenied},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.state);
        use({
            {"read-status-code", c.state}
        });
        const auto session = begin(idOf("tester"));
        ASSERT_TRUE(session);
        EXPECT_EQ(messageOf(read(*session)), statusText(c.status).toStdString());
    }
}

TEST_F(SaneDriverTest, ABadBackendHidesNoOtherOneAndStaysListed)
{
    for (const char *fault : {"crash search", "hang search", "leak search"}) {
        SCOPED_TRACE(fault);
#ifdef __SANITIZE_ADDRESS__
        if (qstrcmp(fault, "leak search") == 0)
            continue; // no bound on memory then
#endif
        SaneLimits limits = usualLimits;
        limits.backendSearch = searchLimit;
        useBad(limits);
        EXPECT_EQ(nameList(search()), "Bad Feeder|frontend-tester");
        m_scanners->setFault(QLatin1StringView(fault));
        EXPECT_EQ(nameList(search()), "Bad Feeder|frontend-tester") << "known from before";
        EXPECT_EQ(workersOf(::getpid()), QList<pid_t>());
    }
}

TEST_F(SaneDriverTest, AWorkerKilledOrStoppedInASearchCostsOneBackendAlone)
{
    SaneLimits limits = usualLimits;
    limits.backendSearch = searchLimit;
    for (const int signal : {SIGKILL, SIGSTOP}) {
        useBad(limits);
        m_scanners->setFault(QStringLiteral("hang search"));
        auto devices = std::async(std::launch::async, [this] { return search(); });
        ASSERT_TRUE(velmor::waitUntil([] { return !workersOf(::getpid()).isEmpty(); }));
        EXPECT_EQ(::kill(worker(), signal), 0);
        EXPECT_EQ(nameList(devices.get()), "frontend-tester");
    }
}

TEST_F(SaneDriverTest, ASearchThatIsStoppedEndsThoughABackendHangs)
{
    useBad();
    m_scanners->setFault(QStringLiteral("hang search"));
    auto devices = std::async(std::launch::async, [this] { return search(); });
    ASSERT_TRUE(velmor::waitUntil([] { return !workersOf(::getpid()).isEmpty(); }));
    m_stop.request_stop();
    EXPECT_EQ(devices.wait_for(10s), std::future_status::ready);
}

TEST_F(SaneDriverTest, FaultsAtAnyStepAreToldAndTheNextScanWorks)
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

TEST_F(SaneDriverTest, AWorkerKilledOrStoppedInAPageCostsThatPageAlone)
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

TEST_F(SaneDriverTest, AWorkerKilledOrStoppedAtTheStartIsAFault)
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

TEST_F(SaneDriverTest, CancellingInAPageLetsTheDeviceGo)
{
    use({
        {"read-delay",          "true"  },
        {"read-delay-duration", "200000"}
    });
    m_settings.dpi = 600;
    const QString id = idOf("tester");
    const auto session = begin(id);
    ASSERT_TRUE(session);
    auto page = std::async(std::launch::async, [&] { return read(*session); });
    m_stop.request_stop();
    ASSERT_EQ(page.wait_for(10s), std::future_status::ready);
    EXPECT_TRUE(std::holds_alternative<Cancelled>(page.get()));
}

TEST_F(SaneDriverTest, ADeviceIsLetGoAlsoByOneThatHangsAtThat)
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

TEST_F(SaneDriverTest, ASearchLeavesADeviceAtWorkAlone)
{
    useBad();
    const QString id = idOf("Bad");
    const auto session = begin(id);
    m_scanners->setFault(QStringLiteral("crash search"));
    EXPECT_EQ(nameList(search()), "Bad Feeder|frontend-tester");
}

TEST_F(SaneDriverTest, AKnownDeviceIsOpenedWithoutASearchAndAnUnknownOneAfterIt)
{
    useBad();
    const QString id = idOf("Bad");
    m_scanners->setFault(QStringLiteral("crash search"));
    EXPECT_TRUE(begin(id));

    useBad();
    EXPECT_TRUE(begin(id)) << "an engine that has just started";
    EXPECT_EQ(messageOf(open(QStringLiteral("usb:no"))), textOf(WorkerTrouble::deviceVanished));
}

TEST_F(SaneDriverTest, WhatIsKnownIsToldAtOnceWhileASearchHangs)
{
    useBad();
    EXPECT_EQ(nameList(search()), "Bad Feeder|frontend-tester");
    m_scanners->setFault(QStringLiteral("hang search"));
    auto devices = std::async(std::launch::async, [this] { return search(); });
    ASSERT_TRUE(velmor::waitUntil([] { return !workersOf(::getpid()).isEmpty(); }));
    EXPECT_EQ(nameList(m_driver->knownDevices()), "Bad Feeder|frontend-tester");
    m_stop.request_stop();
    devices.wait();
}

TEST_F(SaneDriverTest, ADevicePluggedInAnewIsFoundUnderItsNewName)
{
    use({}, {QStringLiteral("bad")});
    m_scanners->setBad({.name = QStringLiteral("libusb:201:007")});
    const QString id = idOf("Bad");
    m_scanners->setBad({.name = QStringLiteral("libusb:201:009")});
    EXPECT_TRUE(begin(id));
}

TEST_F(SaneDriverTest, ADeviceThatStaysBusyIsAFaultAndToldOnce)
{
    SaneLimits limits = usualLimits;
    limits.busy = 50ms;
    limits.busyRetry = 10ms;
    for (const char *fault : {"busy open", "busy start"}) {
        SCOPED_TRACE(fault);
        useBad(limits);
        const QString id = idOf("Bad");
        m_scanners->setFault(QLatin1StringView(fault));
        OpenResult opened = open(id);
        std::string message = messageOf(opened);
        if (auto *session = std::get_if<std::unique_ptr<ScanSession>>(&opened)) {
            EXPECT_EQ(messageOf(feed(**session)), "no fault");
            EXPECT_TRUE(std::holds_alternative<QImage>(read(**session)));
            message = messageOf(feed(**session));
        }
        EXPECT_EQ(message, statusText(SaneStatus::deviceBusy).toStdString());
        EXPECT_EQ(m_told, QStringList{waitingForBusyText()});
    }
}

TEST_F(SaneDriverTest, WithoutAWorkerProgramThereAreNoDevices)
{
    use({});
    WorkerLaunch launch = m_scanners->launch();
    launch.program = QStringLiteral("/none");
    m_driver.emplace(launch, usualLimits);
    EXPECT_EQ(nameList(search()), "");
}

} // namespace
} // namespace scanengine
