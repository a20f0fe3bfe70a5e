#include "scanengine/CommandReader.h"

#include <QByteArrayList>
#include <gtest/gtest.h>

#include <thread>
#include <unistd.h>

namespace scanengine {
namespace {

/// Each item of `input` as text: a line as it is, the others as their name in angle brackets.
QByteArrayList itemsOf(const QByteArray &input)
{
    int ends[2];
    if (::pipe(ends) != 0)
        return {};
    std::jthread writer([&] {
        for (qsizetype sent = 0; sent < input.size();)
            sent += ::write(ends[1], input.constData() + sent, size_t(input.size() - sent));
        ::close(ends[1]);
    });

    CommandReader reader(ends[0]);
    QByteArrayList items;
    for (;;) {
        const CommandReader::Item item = reader.next();
        if (std::holds_alternative<CommandReader::End>(item))
            break;
        items.append(std::holds_alternative<CommandReader::TooLong>(item)
                         ? QByteArray("<too long>")
                         : std::get<QByteArray>(item));
    }
    ::close(ends[0]);
    return items;
}

TEST(CommandReader, CutsTheInputAtLineFeedsAlone)
{
    EXPECT_EQ(itemsOf("one\n\ntwo\r\n\xFFthree\n"),
              (QByteArrayList{"one", "", "two\r", "\xFFthree"}));
}

TEST(CommandReader, ALastLineWithoutItsLineFeedIsNoLine)
{
    EXPECT_EQ(itemsOf("one\n{\"cmd\":\"sc"), QByteArrayList{"one"});
    EXPECT_EQ(itemsOf(""), QByteArrayList());
}

TEST(CommandReader, ALineBeyondTheLimitCostsOnlyItself)
{
    const QByteArray longest(CommandReader::longestLine, 'x');
    EXPECT_EQ(itemsOf("one\n" + longest + "\n" + longest + "x\ntwo\n"),
              (QByteArrayList{"one", longest, "<too long>", "two"}));
    EXPECT_EQ(itemsOf(longest + longest + longest + "\ntwo\n"),
              (QByteArrayList{"<too long>", "two"}));
}

} // namespace
} // namespace scanengine
