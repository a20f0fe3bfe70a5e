#include "scanengine/Protocol.h"

#include <gmock/gmock.h>

namespace scanengine {
namespace {

TEST(Protocol, ALineThatIsNoCommandIsRefusedWithItsReason)
{
    const struct {
        const char *line;
        const char *reason;
    } cases[] = {
        {"",                                               "not one JSON object"  },
        {R"({"cmd":"quit"} {"cmd":"quit"})",               "not one JSON object"  },
        {"{\"cmd\":\"\xFF\xFE\"}",                         "not one JSON object"  },
        {R"({"command":"scan"})",                          "names no command"     },
        {R"({"cmd":7})",                                   "names no command"     },
        {R"({"cmd":"scan "})",                             "Unknown command"      },
        {R"({"cmd":"scan","dpi":"300"})",                  "\"dpi\""              },
        {R"({"cmd":"scan","dpi":1e300})",                  "\"dpi\""              },
        {R"({"cmd":"scan","batchWaitForPaper":1})",        "\"batchWaitForPaper\""},
        {R"({"cmd":"adjust","auto":{"contrast":true}})",   "\"contrast\""         },
        {R"({"cmd":"calibrate","output":{"path":false}})", "\"path\""             },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.line);
        const auto command = parseCommand(c.line);
        ASSERT_TRUE(faultOf(command));
        EXPECT_THAT(faultOf(command)->message.toStdString(), testing::HasSubstr(c.reason));
    }
}

TEST(Protocol, AScanKeepsEveryValueThatWasSent)
{
    const auto command = std::get<Command>(parseCommand(
        R"({"output":{"format":"images","path":"\/home\/a b\/\u00e4.pdf"},"cmd":"scan",)"
        R"("deviceId":"feeder:\/x","driver":"feeder","source":"auto","dpi":600.0,"new":[1],)"
        R"("colorMode":"bw","batchWaitForPaper":true,"input":null,)"
        R"("auto":{"crop":true,"cropWidthMode":"auto","cropHeightMode":"fixed",)"
        R"("cropFixedHeightMm":29.7,"deskew":true,"cleanBackground":true,"blankRemoval":true,)"
        R"("autoLevels":true,"ocr":true,"ocrLanguage":"deu","brightness":-40,"contrast":70}})"));
    EXPECT_EQ(command.verb, Verb::scan);
    EXPECT_EQ(command.dpi, 600);
    EXPECT_EQ(command.input, std::nullopt);
    EXPECT_EQ(command.outputPath, QStringLiteral("/home/a b/ä.pdf"));
    const AutoSwitches &switches = command.processing;
    EXPECT_TRUE(switches.crop && switches.deskew && switches.cleanBackground);
    EXPECT_TRUE(switches.blankRemoval && switches.autoLevels && switches.ocr);
    EXPECT_EQ(switches.cropWidthMode, QStringLiteral("auto"));
    EXPECT_EQ(switches.cropHeightMode, QStringLiteral("fixed"));
    EXPECT_EQ(switches.cropFixedHeightMm, 29.7);
    EXPECT_EQ(switches.ocrLanguage, QStringLiteral("deu"));
    EXPECT_EQ(switches.contrast, 70);
}

TEST(Protocol, CancelAndQuitGetThroughWhateverElseTheLineHolds)
{
    for (const char *line : {R"({"cmd":"cancel","dpi":"x"})", R"({"cmd":"quit","auto":7})"})
        EXPECT_TRUE(std::holds_alternative<Command>(parseCommand(line))) << line;
}

} // namespace
} // namespace scanengine
