#include "pipeline/recognition/LineAssembly.h"

#include <gtest/gtest.h>

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
    const struct {
        const char *what;
        RecognizedWords words;
        std::vector<std::string> lines;
    } cases[] = {
        {"item and price",
         {word("brown", 0), word("loaf", 115), word("3.85", 600)},
         {"brown loaf", "3.85"}                                                      },
        {"right to left, near", {word("أهلا", 800), word("بكم", 690)}, {"أهلا بكم"}  },
        {"overlapping boxes",   {word("brown", 0), word("loaf", 90)},  {"brown loaf"}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(textsOf(c.words), c.lines) << c.what;
}

TEST(LineAssembly, LeavesOutWhatIsNoText)
{
    const struct {
        const char *what;
        RecognizedWords words;
        bool kept;
    } cases[] = {
        {"a picture's edge",       {word("wrfve", 0, 100, 20)},                           false},
        {"one clear character",    {word("7", 0, 20, 96)},                                true },
        {"one doubtful character", {word("y", 0, 20, 60)},                                false},
        {"doubtful signs",         {word("~=|a;", 0, 90, 60), word("b—;", 100, 100, 60)}, false},
        {"a rule read as dashes",  {word("————", 0, 400, 95)},                            false},
        {"one bad word of many",   {word("Thank", 0), word("yqv", 110, 90, 10)},          true },
    };
    for (const auto &c : cases)
        EXPECT_EQ(!textsOf(c.words).empty(), c.kept) << c.what;
}

TEST(LineAssembly, SetsNoSpacesWhereTheScriptHasNone)
{
    const struct {
        RecognizedWords words;
        const char *text;
    } cases[] = {
        {{word("港务长", 0), word("在他的", 100), word("书里，", 200)}, "港务长在他的书里，"},
        {{word("第", 0), word("Qt", 100), word("版", 200)},             "第 Qt 版"          },
        {{word("한국어", 0), word("문서", 100)},                        "한국어 문서"       },
    };
    for (const auto &c : cases)
        EXPECT_EQ(lineText(c.words).toStdString(), c.text);
}

TEST(LineAssembly, PlacesLinesOnTheImageAsItCame)
{
    // On a page of 1000 x 2000 pixels, near its upper left corner.
    const TextAnswer text{{{{QStringLiteral("corner"), QRect(100, 200, 300, 100), 95}}}};
    const struct {
        const char *what;
        int degrees; ///< That the image was turned clockwise to be upright.
        QRect percent;
    } cases[] = {
        {"upright",                      0,   {10, 85, 30, 5}},
        {"image lies on its left side",  90,  {10, 10, 5, 30}},
        {"image lies on its right side", 270, {85, 60, 5, 30}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const auto lines = assembleLines(text, page, c.degrees);
        ASSERT_EQ(lines.size(), 1U);
        const QRectF &box = lines[0].box;
        EXPECT_EQ(QRectF(box.topLeft() * 100, box.size() * 100).toRect(), c.percent);
    }
}

TEST(LineAssembly, KeepsBoxesWithinTheImage)
{
    const TextAnswer text{{{{QStringLiteral("edge"), QRect(-20, -20, 2000, 5000), 95}}}};
    EXPECT_EQ(assembleLines(text, page, 0).at(0).box, QRectF(0, 0, 1, 1));
}

} // namespace
} // namespace velmor
