#include "shell/AppInfo.h"

#include <QCoreApplication>
#include <gmock/gmock.h>

#include <array>
#include <vector>

namespace velmor {
namespace {

using AppInfo::EngineKind;

TEST(AppInfo, AVersionThatIsMissingFallsBack)
{
    const QString before = QCoreApplication::applicationVersion();
    QCoreApplication::setApplicationVersion(QStringLiteral("3.4"));
    EXPECT_EQ(AppInfo::version(), u"3.4");
    EXPECT_EQ(AppInfo::aboutLines(EngineKind::own).at(1).text, u"Version 3.4");
    QCoreApplication::setApplicationVersion({});
    EXPECT_EQ(AppInfo::aboutLines(EngineKind::own).at(1).text, u"Version 0.1.710");
    QCoreApplication::setApplicationVersion(before);
}

TEST(AppInfo, TheBundleIsToldFromOurEngine)
{
    const struct {
        const char *path; ///< Null if there is no engine.
        EngineKind kind;
    } cases[] = {
        {"/opt/lib/velmor/scanengine.app/Contents/MacOS/scanengine", EngineKind::bundle},
        {"/usr/libexec/velmor/scanengine",                           EngineKind::own   },
        {"/opt/notscanengine.app/Contents/MacOS/scanengine",         EngineKind::own   },
        {nullptr,                                                    EngineKind::own   },
    };
    for (const auto &c : cases) {
        const auto path = c.path ? std::optional(QString::fromUtf8(c.path)) : std::nullopt;
        EXPECT_EQ(AppInfo::engineKind(path), c.kind) << (c.path ? c.path : "none");
    }
}

TEST(AppInfo, AboutCreditsTheEngineInUse)
{
    const struct {
        EngineKind engine;
        std::array<const char *, 6> names; ///< One at least in each line of its own credits.
    } cases[] = {
        {EngineKind::bundle,
         {"Scanning engine powered by NAPS2.Sdk", "NAPS2.Sdk contributors",
          "NAPS2.Sdk is licensed under the GNU LGPL 2.1 (or later);",
          "NAPS2.Wia is licensed under the MIT license.",
          "The engine runs as a separate process (scanengine.app).", "Source code: "}},
        {EngineKind::own,
         {"Scanning engine powered by SANE", "sane-airscan", "GNU GPL 2", "Apache",
          "separate process (scanengine).", "Source code: "}                         },
    };
    for (const auto &c : cases) {
        const auto found = AppInfo::aboutLines(c.engine);
        const std::vector<AppInfo::Line> lines(found.begin(), found.end());
        ASSERT_EQ(lines.size(), 9U);
        EXPECT_EQ(lines[0], (AppInfo::Line{AppInfo::tagline(), 12, QFont::DemiBold, false}));
        EXPECT_EQ(lines[1].size, 11);
        EXPECT_TRUE(lines[1].gray);
        EXPECT_EQ(lines[2], (AppInfo::Line{{}, 4, QFont::Normal, false}));
        for (size_t i = 3; i < 9; ++i) {
            EXPECT_TRUE(lines[i].text.contains(QString::fromUtf8(c.names.at(i - 3))))
                << lines[i].text.toStdString();
            EXPECT_EQ(lines[i].size, 10);
            EXPECT_EQ(lines[i].gray, i > 3) << i;
        }
    }
}

} // namespace
} // namespace velmor
