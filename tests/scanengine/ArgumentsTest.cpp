#include "scanengine/Arguments.h"

#include <gtest/gtest.h>

namespace scanengine {
namespace {

TEST(Arguments, TheLogFileOfTheCallGoesBeforeThatOfTheEnvironment)
{
    const struct {
        const char *words;
        const char *logFile; // nothing when the words are refused
    } cases[] = {
        {"",                  "/env"  },
        {"--log /tmp/a",      "/tmp/a"},
        {"--log=/tmp/a",      "/tmp/a"},
        {"--log=/a --log /b", "/b"    },
        {"--log",             nullptr },
        {"--logs /tmp/a",     nullptr },
        {"scan",              nullptr },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.words);
        const auto parsed = parseArguments(
            QString::fromUtf8(c.words).split(u' ', Qt::SkipEmptyParts), QStringLiteral("/env"));
        const auto *arguments = std::get_if<Arguments>(&parsed);
        EXPECT_EQ(arguments != nullptr, c.logFile != nullptr);
        EXPECT_EQ(arguments ? arguments->logFile : QString(), QString::fromUtf8(c.logFile));
    }
}

TEST(Arguments, TheHelpFitsATerminal)
{
    for (const QString &line : usageText().split(u'\n'))
        EXPECT_LE(line.size(), 80) << line.toStdString();
}

} // namespace
} // namespace scanengine
