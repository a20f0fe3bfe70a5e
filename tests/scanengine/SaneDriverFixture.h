#pragma once

#include "TestScanners.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

namespace scanengine {

/// Limits that never matter where nothing hangs.
inline constexpr SaneLimits usualLimits{.backendSearch = std::chrono::seconds(20),
                                        .wholeSearch = std::chrono::seconds(30)};

/// Limits that are soon over where something hangs, and wide enough for a busy computer.
#ifdef __SANITIZE_ADDRESS__
inline constexpr std::chrono::milliseconds soon = std::chrono::seconds(6);
#else
inline constexpr std::chrono::milliseconds soon = std::chrono::seconds(2);
#endif
/// For a worker to let go what it never will.
inline constexpr std::chrono::milliseconds inVain = std::chrono::milliseconds(50);

/// The message of a fault, or "no fault".
std::string messageOf(const auto &result)
{
    const Fault *fault = faultOf(result);
    return fault ? fault->message.toStdString() : "no fault";
}

inline std::string textOf(WorkerTrouble trouble)
{
    return troubleText(trouble).toStdString();
}

/// The names of `devices` in the order of the alphabet, with a bar between them.
inline std::string nameList(const QList<Device> &devices)
{
    QStringList names;
    for (const Device &device : devices)
        names.append(device.name);
    names.sort();
    return names.join(u'|').toStdString();
}

/// The driver, in this process, with its workers and the scanners of a configuration of their own.
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

} // namespace scanengine
