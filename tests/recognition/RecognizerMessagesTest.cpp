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
    const auto arrives = [](const GreyPixels &page) {
        const RecognizerRequest request(TextRequest{QStringLiteral("eng"), 300, page});
        return decodeRequest(encode(request)).has_value();
    };
    EXPECT_TRUE(arrives({QSize(4, 4), QByteArray(16, 'x')}));
    EXPECT_FALSE(arrives({QSize(4, 4), QByteArray(15, 'x')}));
    EXPECT_FALSE(arrives({QSize(-2, -2), QByteArray(4, 'x')}));
    EXPECT_FALSE(arrives({QSize(40'000, 1), QByteArray(40'000, 1)})) << "beyond what is counted";
    EXPECT_FALSE(arrives({QSize(65'536, 65'536), {}})) << "wraps in 32 bits";
}

TEST(RecognizerMessages, WithImpossibleWordsAreRefused)
{
    const auto arrives = [](const RecognizedWords &words) {
        return decodeAnswer(encode(RecognizerAnswer(TextAnswer{{words}}))).has_value();
    };
    const QString text = QStringLiteral("word");
    const QRect box(0, 0, 5, 5);
    EXPECT_TRUE(arrives({
        {text, box, 50}
    }));
    EXPECT_FALSE(arrives({}));
    EXPECT_FALSE(arrives({
        {QString(), box, 50}
    }));
    EXPECT_FALSE(arrives({
        {text, QRect(0, 0, 0, 5), 50}
    }));
    EXPECT_FALSE(arrives({
        {text, box, 101}
    }));
    EXPECT_FALSE(arrives({
        {text, box, std::numeric_limits<double>::quiet_NaN()}
    }));
}

TEST(RecognizerMessages, HugeCountsWithNothingBehindThemAreRefused)
{
    const QByteArray textAnswer = encode(RecognizerAnswer(TextAnswer()));
    EXPECT_FALSE(decodeAnswer(textAnswer.first(1) + QByteArray("\x7f\xff\xff\xff", 4)));
}

} // namespace
} // namespace velmor
