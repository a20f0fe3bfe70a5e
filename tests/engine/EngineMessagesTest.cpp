#include "engine/EngineCommand.h"
#include "engine/EngineEvent.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include <limits>

namespace velmor {
namespace {

QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

TEST(EngineCommand, EveryFieldIsWrittenUnderItsKeyAndOnOneLine)
{
    const EngineCommand command{
        .cmd = QStringLiteral("scan"),
        .deviceId = QStringLiteral("usb:1"),
        .input = QStringLiteral("/in\n\"ä\".png"),
        .driver = QStringLiteral("sane"),
        .source = QStringLiteral("flatbed"),
        .dpi = 300,
        .colorMode = QStringLiteral("gray"),
        .batchWaitForPaper = false,
        .autoSettings = EngineCommand::Auto{.crop = true,
                                            .cropWidthMode = QStringLiteral("auto"),
                                            .cropHeightMode = QStringLiteral("fixed"),
                                            .cropFixedWidthMm = 210.5,
                                            .cropFixedHeightMm = 297,
                                            .deskew = true,
                                            .cleanBackground = true,
                                            .blankRemoval = true,
                                            .autoLevels = true,
                                            .ocr = true,
                                            .ocrLanguage = QStringLiteral("eng"),
                                            .brightness = -1000,
                                            .contrast = 70},
        .output = EngineCommand::Output{QStringLiteral("/out.pdf"), QStringLiteral("images")}
    };
    const QByteArray line = command.encoded();
    EXPECT_FALSE(line.contains('\n'));
    EXPECT_EQ(json(line), json(R"({"cmd":"scan","deviceId":"usb:1","input":"/in\n\"ä\".png",
        "driver":"sane","source":"flatbed","dpi":300,"colorMode":"gray","batchWaitForPaper":false,
        "auto":{"crop":true,"cropWidthMode":"auto","cropHeightMode":"fixed",
                "cropFixedWidthMm":210.5,"cropFixedHeightMm":297,"deskew":true,
                "cleanBackground":true,"blankRemoval":true,"autoLevels":true,"ocr":true,
                "ocrLanguage":"eng","brightness":-1000,"contrast":70},
        "output":{"path":"/out.pdf","format":"images"}})"));
}

TEST(EngineCommand, AMeasureWithoutAJsonFormMakesNoMessage)
{
    EngineCommand command{.cmd = QStringLiteral("scan"), .autoSettings = EngineCommand::Auto()};
    command.autoSettings->cropFixedHeightMm = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(command.encoded(), QByteArray());
}

TEST(EngineEvent, EveryFieldIsReadFromItsKey)
{
    const EngineEvent expected{
        .event = QStringLiteral("done"),
        .version = QStringLiteral("1.2"),
        .message = QStringLiteral("grüß"),
        .index = -1,
        .pages = 2,
        .file = QStringLiteral("/a/b.pdf"),
        .files = QStringList{QStringLiteral("/a/1.png"), QStringLiteral("/a/2.png")},
        .devices = QList<EngineEvent::Device>{
                             {QStringLiteral("i"), QStringLiteral("n"), QStringLiteral("d")}}
    };
    EXPECT_EQ(EngineEvent::decode(R"({"event":"done","version":"1.2","message":"grüß","index":-1,
        "pages":2,"file":"\/a\/b.pdf","files":["/a/1.png","/a/2.png"],
        "devices":[{"id":"i","name":"n","driver":"d","model":7}]})"),
              expected);
}

TEST(EngineEvent, AbsenceIsNotAFault)
{
    const EngineEvent bare{.event = QStringLiteral("x")};
    const char *lines[] = {
        R"({"event":"x"})",
        R"( {"event" : "x"} )"
        "\r",
        R"({"event":"x","version":null,"message":null,"index":null,"pages":null,"file":null,
            "files":null,"devices":null})",
        R"({"event":"x","unknown":[{"id":3}],"cmd":{}})",
    };
    for (const char *line : lines)
        EXPECT_EQ(EngineEvent::decode(line), bare) << line;

    const auto empty = EngineEvent::decode(R"({"event":"","files":[],"devices":[]})");
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->files, QStringList());
    EXPECT_EQ(empty->devices, QList<EngineEvent::Device>());
}

TEST(EngineEvent, ALineWithAnyFaultIsLostAsAWhole)
{
    const QByteArray lines[] = {
        "",
        "[]",
        R"({})",
        R"({"event":"x")",
        R"({"event":"x"}{"event":"y"})",
        R"({"event":"x","version":2})",
        R"({"event":"x","pages":"2"})",
        R"({"event":"x","pages":3.5})",
        R"({"event":"x","pages":2147483648})",
        R"({"event":"x","pages":1e300})",
        R"({"event":"x","files":["/a",1]})",
        R"({"event":"x","devices":[{"id":"i","name":"n"}]})",
        R"({"event":"x","devices":[{"id":"i","name":"n","driver":"d"},{"id":1,"name":"n","driver":"d"}]})",
        "{\"event\":\"x\",\"message\":\"\xc3\"}",
        "{\"event\":\"x\",\"unknown\":\"\xed\xa0\x80\"}",
        R"({"event":"x","deep":)" + QByteArray(1'000'000, '[') + QByteArray(1'000'000, ']') + "}",
    };
    for (const QByteArray &line : lines)
        EXPECT_EQ(EngineEvent::decode(line), std::nullopt) << line.left(100).toStdString();
}

TEST(EngineEvent, AWholeNumberMayBeWrittenAsAFraction)
{
    const std::pair<const char *, int> cases[] = {
        {"3.0",         3              },
        {"3e0",         3              },
        {"2147483647",  2147483647     },
        {"-2147483648", -2147483647 - 1}
    };
    for (const auto &[text, value] : cases) {
        const auto event =
            EngineEvent::decode(QByteArray(R"({"event":"page","index":)") + text + "}");
        ASSERT_TRUE(event) << text;
        EXPECT_EQ(event->index, value);
    }
}

TEST(EngineEvent, AVeryLongMessageIsCut)
{
    const auto messageOf = [](const QString &text) {
        const auto event =
            EngineEvent::decode("{\"event\":\"error\",\"message\":\"" + text.toUtf8() + "\"}");
        return event->message.value_or(QString());
    };
    const QString longest(maximumMessageLength, u'x');
    EXPECT_EQ(messageOf(longest), longest);
    EXPECT_EQ(messageOf(longest + u'x'), longest.chopped(1) + u'…');
    const QString paper = QStringLiteral("📄");
    EXPECT_EQ(messageOf(paper.repeated(maximumMessageLength)),
              paper.repeated(maximumMessageLength / 2 - 1) + u'…');
}

} // namespace
} // namespace velmor
