#include "engine/LineFramer.h"

#include <QList>
#include <gmock/gmock.h>

namespace velmor {
namespace {

QList<QByteArray> linesOf(const QList<QByteArray> &chunks, qsizetype maximumBytes)
{
    LineFramer framer(maximumBytes);
    QList<QByteArray> lines;
    for (const QByteArray &chunk : chunks) {
        framer.append(chunk);
        while (const auto line = framer.next())
            lines.append(*line);
    }
    return lines;
}

TEST(LineFramer, LinesComeOutWholeHoweverTheyAreCut)
{
    struct Case {
        const char *what;
        QList<QByteArray> chunks;
        QList<QByteArray> lines;
    };
    const Case cases[] = {
        {"two lines in one chunk",            {"one\ntwo\n"},                      {"one", "two"}         },
        {"one line in three chunks",          {"o", "n", "e\n"},                   {"one"}                },
        {"a line feed of its own",            {"one", "\n", "two\n"},              {"one", "two"}         },
        {"end of one, start of the next",     {"one\ntw", "o\nth", "ree\n"},       {"one", "two", "three"}},
        {"empty lines",                       {"\n\n", "one\n\n\ntwo\n"},          {"one", "two"}         },
        {"an empty chunk",                    {"on", "", "e\n"},                   {"one"}                },
        {"no line feed at the end",           {"one\ntwo"},                        {"one"}                },
        {"exactly at the limit",              {"12345678\n"},                      {"12345678"}           },
        {"above the limit in one chunk",      {"a\n123456789\nb\n"},               {"a", "b"}             },
        {"above the limit in many chunks",    {"a\n123456", "789", "0", "1\nb\n"}, {"a", "b"}             },
        {"far above the limit, then at once", {"1234567890", "\nb\n"},             {"b"}                  },
        {"two above the limit in a row",      {"1234567890\n1234567890", "\nb\n"}, {"b"}                  },
        {"the tail of a dropped line",        {"1234567890", "tail\n", "b\n"},     {"b"}                  },
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(linesOf(c.chunks, 8), c.lines);
    }
}

// With time in the square of the length this takes minutes, and the test runs into its time-out.
TEST(LineFramer, AVeryLongLineInSmallChunksComesOutWhole)
{
    const qsizetype chunkSize = 4096;
    const QByteArray chunk(chunkSize, 'x');
    const qsizetype chunks = 50'000'000 / chunkSize;
    LineFramer framer;
    for (qsizetype i = 0; i < chunks; ++i) {
        framer.append(chunk);
        ASSERT_FALSE(framer.next());
    }
    framer.append("\nafter\n");
    EXPECT_EQ(framer.next().value_or(QByteArray()).size(), chunks * chunkSize);
    EXPECT_EQ(framer.next(), "after");
}

TEST(LineFramer, ManyShortLinesInOneChunkComeOutAll)
{
    const int count = 2'000'000;
    LineFramer framer;
    framer.append(QByteArray("ab\n").repeated(count));
    int lines = 0;
    while (framer.next())
        ++lines;
    EXPECT_EQ(lines, count);
}

} // namespace
} // namespace velmor
