#include "engine/LineFramer.h"

#include <QList>
#include <gtest/gtest.h>

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
    const struct {
        const char *what;
        QList<QByteArray> chunks;
        QList<QByteArray> lines;
    } cases[] = {
        {"one line in three chunks",       {"o", "n", "e\n"},                   {"one"}                },
        {"end of one, start of the next",  {"one\ntw", "o\nth", "ree\n"},       {"one", "two", "three"}},
        {"empty lines",                    {"\n\n", "one\n\n\ntwo\n"},          {"one", "two"}         },
        {"no line feed at the end",        {"one\ntwo"},                        {"one"}                },
        {"exactly at the limit",           {"12345678\n"},                      {"12345678"}           },
        {"above the limit in one chunk",   {"a\n123456789\nb\n"},               {"a", "b"}             },
        {"above the limit in many chunks", {"a\n123456", "789", "0", "1\nb\n"}, {"a", "b"}             },
        {"two above the limit in a row",   {"1234567890\n1234567890", "\nb\n"}, {"b"}                  },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(linesOf(c.chunks, 8), c.lines);
    }
}

} // namespace
} // namespace velmor
