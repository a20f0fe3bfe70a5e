#include "SaneDriverFixture.h"
#include "tests/Waiting.h"

#include <csignal>
#include <future>

namespace scanengine {
namespace {

using namespace std::chrono_literals;

/// For the search of one backend that hangs.
constexpr std::chrono::milliseconds searchLimit = soon + 1s;

class SaneSearchTest : public SaneDriverTest {};

TEST_F(SaneSearchTest, ABadBackendHidesNoOtherOneAndStaysListed)
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

TEST_F(SaneSearchTest, AWorkerKilledOrStoppedInASearchCostsOneBackendAlone)
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

TEST_F(SaneSearchTest, ASearchThatIsStoppedEndsThoughABackendHangs)
{
    useBad();
    m_scanners->setFault(QStringLiteral("hang search"));
    auto devices = std::async(std::launch::async, [this] { return search(); });
    ASSERT_TRUE(velmor::waitUntil([] { return !workersOf(::getpid()).isEmpty(); }));
    m_stop.request_stop();
    EXPECT_EQ(devices.wait_for(10s), std::future_status::ready);
}

TEST_F(SaneSearchTest, ASearchLeavesADeviceAtWorkAlone)
{
    useBad();
    const QString id = idOf("Bad");
    const auto session = begin(id);
    m_scanners->setFault(QStringLiteral("crash search"));
    EXPECT_EQ(nameList(search()), "Bad Feeder|frontend-tester");
}

TEST_F(SaneSearchTest, AKnownDeviceIsOpenedWithoutASearchAndAnUnknownOneAfterIt)
{
    useBad();
    const QString id = idOf("Bad");
    m_scanners->setFault(QStringLiteral("crash search"));
    EXPECT_TRUE(begin(id));

    useBad();
    EXPECT_TRUE(begin(id)) << "an engine that has just started";
    EXPECT_EQ(messageOf(open(QStringLiteral("usb:no"))), textOf(WorkerTrouble::deviceVanished));
}

TEST_F(SaneSearchTest, WhatIsKnownIsToldAtOnceWhileASearchHangs)
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

TEST_F(SaneSearchTest, ADevicePluggedInAnewIsFoundUnderItsNewName)
{
    use({}, {QStringLiteral("bad")});
    m_scanners->setBad({.name = QStringLiteral("libusb:201:007")});
    const QString id = idOf("Bad");
    m_scanners->setBad({.name = QStringLiteral("libusb:201:009")});
    EXPECT_TRUE(begin(id));
}

TEST_F(SaneSearchTest, WithoutAWorkerProgramThereAreNoDevices)
{
    use({});
    WorkerLaunch launch = m_scanners->launch();
    launch.program = QStringLiteral("/none");
    m_driver.emplace(launch, usualLimits);
    EXPECT_EQ(nameList(search()), "");
}

} // namespace
} // namespace scanengine
