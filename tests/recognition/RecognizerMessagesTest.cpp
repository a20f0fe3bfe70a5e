#include "pipeline/recognizer/RecognizerMessages.h"

#include <gmock/gmock.h>

#include <limits>

namespace velmor {
namespace {

using testing::Eq;
using testing::Optional;

TextRequest someRequest()
{
    return {
        QStringLiteral("deu"), 300, {QSize(3, 2), QByteArray("\0\x7f\xff\1\2\3", 6)}
    };
}

TextAnswer someText()
{
    const RecognizedWord word{QStringLiteral("Größe"), QRect(4, 5, 60, 20), 93.5};
    return {
        {{word, word}, {word}}
    };
}

TEST(RecognizerMessages, ArriveAsTheyWereSent)
{
    const RecognizerRequest requests[] = {
        LanguagesRequest(), someRequest(), OrientationRequest{200, someRequest().page}
    };
    for (const auto &request : requests)
        EXPECT_THAT(decodeRequest(encode(request)), Optional(Eq(request)));

    const RecognizerAnswer answers[] = {
        FailureAnswer(), LanguagesAnswer{{QStringLiteral("eng"), QStringLiteral("osd")}},
        someText(), TextAnswer(), OrientationAnswer{270, 12.5, QStringLiteral("Latin"), 3.25}
    };
    for (const auto &answer : answers)
        EXPECT_THAT(decodeAnswer(encode(answer)), Optional(Eq(answer)));
}

TEST(RecognizerMessages, WithBytesMissingOrLeftOverAreRefused)
{
    const QByteArray request = encode(RecognizerRequest(someRequest()));
    for (qsizetype size = 0; size < request.size(); ++size)
        EXPECT_FALSE(decodeRequest(request.first(size))) << size;
    EXPECT_FALSE(decodeRequest(request + '\0'));

    const QByteArray answer = encode(RecognizerAnswer(someText()));
    for (qsizetype size = 0; size < answer.size(); ++size)
        EXPECT_FALSE(decodeAnswer(answer.first(size))) << size;
    EXPECT_FALSE(decodeAnswer(answer + '\0'));
}

TEST(RecognizerMessages, WithImpossiblePagesAreRefused)
{
    struct Case {
        const char *what;
        GreyPixels page;
    };
    const Case cases[] = {
        {"fewer pixels than the size says",       {QSize(4, 4), QByteArray(15, 'x')}       },
        {"more pixels than the size says",        {QSize(4, 4), QByteArray(17, 'x')}       },
        {"no pixels",                             {QSize(0, 4), {}}                        },
        {"sides below zero",                      {QSize(-2, -2), QByteArray(4, 'x')}      },
        {"a side beyond what recognition counts", {QSize(40'000, 1), QByteArray(40'000, 1)}},
        {"sides whose product wraps in 32 bits",  {QSize(65'536, 65'536), {}}              },
    };
    for (const Case &c : cases) {
        const RecognizerRequest request(TextRequest{QStringLiteral("eng"), 300, c.page});
        EXPECT_FALSE(decodeRequest(encode(request))) << c.what;
    }
}

TEST(RecognizerMessages, WithImpossibleWordsAreRefused)
{
    struct Case {
        const char *what;
        RecognizedWord word;
    };
    const QString text = QStringLiteral("word");
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const Case cases[] = {
        {"no text",              {{}, QRect(0, 0, 5, 5), 50}   },
        {"an empty box",         {text, QRect(0, 0, 0, 5), 50} },
        {"confidence above 100", {text, QRect(0, 0, 5, 5), 101}},
        {"confidence below 0",   {text, QRect(0, 0, 5, 5), -1} },
        {"confidence no number", {text, QRect(0, 0, 5, 5), nan}},
    };
    for (const Case &c : cases)
        EXPECT_FALSE(decodeAnswer(encode(RecognizerAnswer(TextAnswer{{{c.word}}})))) << c.what;
    EXPECT_FALSE(decodeAnswer(encode(RecognizerAnswer(TextAnswer{{{}}})))) << "a line of no words";
    EXPECT_FALSE(decodeAnswer(encode(RecognizerAnswer(OrientationAnswer{45, 1, {}, 1}))));
}

TEST(RecognizerMessages, HugeCountsWithNothingBehindThemAreRefused)
{
    const QByteArray textAnswer = encode(RecognizerAnswer(TextAnswer()));
    EXPECT_FALSE(decodeAnswer(textAnswer.first(1) + QByteArray("\x7f\xff\xff\xff", 4)));
    const QByteArray languages = encode(RecognizerAnswer(LanguagesAnswer()));
    EXPECT_FALSE(decodeAnswer(languages.first(1) + QByteArray("\x7f\xff\xff\xff", 4)));
    EXPECT_FALSE(decodeAnswer(QByteArray("\x63", 1))) << "an unknown message";
}

} // namespace
} // namespace velmor
