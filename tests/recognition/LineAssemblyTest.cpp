#include "pipeline/recognition/LineAssembly.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

constexpr QSize page(1000, 2000);

RecognizedWord word(const char *text, int left, int width = 100, double confidence = 95)
{
    return {QString::fromUtf8(text), QRect(left, 100, width, 40), confidence};
}

std::vector<std::string> textsOf(const RecognizedWords &words)
{
    std::vector<std::string> texts;
    for (const OcrLine &line : assembleLines({{words}}, page, 0))
        texts.push_back(line.text.toStdString());
    return texts;
}

TEST(LineAssembly, CutsLinesWherePartsStandFarApart)
{
    struct Case {
        const char *what;
        RecognizedWords words;
        std::vector<std::string> lines;
    };
    const Case cases[] = {
        {"words",                {word("brown", 0), word("loaf", 115)}, {"brown loaf"} },
        {"widely justified",     {word("brown", 0), word("loaf", 180)}, {"brown loaf"} },
        {"item and price",
         {word("brown", 0), word("loaf", 115), word("3.85", 600)},
         {"brown loaf", "3.85"}                                                        },
        {"right to left, apart", {word("أهلا", 800), word("بكم", 100)}, {"أهلا", "بكم"}},
        {"right to left, near",  {word("أهلا", 800), word("بكم", 690)}, {"أهلا بكم"}   },
        {"overlapping boxes",    {word("brown", 0), word("loaf", 90)},  {"brown loaf"} },
    };
    for (const Case &c : cases)
        EXPECT_EQ(textsOf(c.words), c.lines) << c.what;
}

TEST(LineAssembly, LeavesOutWhatIsNoText)
{
    struct Case {
        const char *what;
        RecognizedWords words;
        bool kept;
    };
    const Case cases[] = {
        {"a clear line",           {word("receipt", 0)},                                  true },
        {"a faded line",           {word("receipt", 0, 100, 50)},                         true },
        {"a picture's edge",       {word("wrfve", 0, 100, 20)},                           false},
        {"one clear character",    {word("7", 0, 20, 96)},                                true },
        {"one doubtful character", {word("y", 0, 20, 60)},                                false},
        {"doubtful signs",         {word("~=|a;", 0, 90, 60), word("b—;", 100, 100, 60)}, false},
        {"a rule read as dashes",  {word("————", 0, 400, 95)},                            false},
        {"a clear price",          {word("£46.00", 0, 100, 90)},                          true },
        {"one bad word of many",   {word("Thank", 0), word("yqv", 110, 90, 10)},          true },
    };
    for (const Case &c : cases)
        EXPECT_EQ(!textsOf(c.words).empty(), c.kept) << c.what;
}

TEST(LineAssembly, SetsNoSpacesWhereTheScriptHasNone)
{
    struct Case {
        RecognizedWords words;
        const char *text;
    };
    const Case cases[] = {
        {{word("港务长", 0), word("在他的", 100), word("书里，", 200)}, "港务长在他的书里，"},
        {{word("お茶", 0), word("と", 100)},                            "お茶と"            },
        {{word("第", 0), word("Qt", 100), word("版", 200)},             "第 Qt 版"          },
        {{word("한국어", 0), word("문서", 100)},                        "한국어 문서"       },
    };
    for (const Case &c : cases)
        EXPECT_EQ(lineText(c.words).toStdString(), c.text);
}

TEST(LineAssembly, PlacesLinesOnTheImageAsItCame)
{
    // On a page of 1000 x 2000 pixels, near its upper left corner.
    const TextAnswer text{{{{QStringLiteral("corner"), QRect(100, 200, 300, 100), 95}}}};
    struct Case {
        const char *what;
        int degrees; ///< That the image was turned clockwise to be upright.
        QRectF box;
    };
    const Case cases[] = {
        {"upright",                      0,   {0.1, 0.85, 0.3, 0.05}},
        {"image lies on its left side",  90,  {0.1, 0.1, 0.05, 0.3} },
        {"image is upside down",         180, {0.6, 0.1, 0.3, 0.05} },
        {"image lies on its right side", 270, {0.85, 0.6, 0.05, 0.3}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const auto lines = assembleLines(text, page, c.degrees);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_NEAR(lines[0].box.left(), c.box.left(), 1e-9);
        EXPECT_NEAR(lines[0].box.top(), c.box.top(), 1e-9);
        EXPECT_NEAR(lines[0].box.width(), c.box.width(), 1e-9);
        EXPECT_NEAR(lines[0].box.height(), c.box.height(), 1e-9);
    }
}

TEST(LineAssembly, KeepsBoxesWithinTheImage)
{
    const TextAnswer text{{{{QStringLiteral("edge"), QRect(-20, -20, 2000, 5000), 95}}}};
    EXPECT_EQ(assembleLines(text, page, 0).at(0).box, QRectF(0, 0, 1, 1));
}

TEST(LineAssembly, WeighsConfidenceByTheLengthOfWords)
{
    const TextAnswer text{
        {{word("abcdefgh", 0, 100, 90)}, {word("xy", 0, 100, 40)}}
    };
    EXPECT_DOUBLE_EQ(meanConfidence(text), 80);
    EXPECT_DOUBLE_EQ(meanConfidence({}), 0);
}

} // namespace
} // namespace velmor
