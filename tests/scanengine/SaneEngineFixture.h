#pragma once

#include "EngineProcess.h"
#include "TestScanners.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <optional>

namespace scanengine {

inline const QJsonObject listDevicesCommand{
    {QStringLiteral("cmd"), QStringLiteral("listDevices")}
};
inline const QJsonObject cancelCommand{
    {QStringLiteral("cmd"), QStringLiteral("cancel")}
};
inline const QJsonObject quitCommand{
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

    /// With our own backend alone.
    void startBad(const BadScanner &bad)
    {
        start({}, {QStringLiteral("bad")});
        m_scanners->setBad(bad);
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

    [[nodiscard]] QJsonObject batchScan() const
    {
        constexpr int dpi = 75;
        QJsonObject batch = scan(dpi);
        batch[u"batchWaitForPaper"] = true;
        return batch;
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

} // namespace scanengine
