#include "bench/corpus/PageArt.h"

#include "bench/corpus/PageContents.h"
#include "bench/corpus/PageFlaws.h"

#include <QRandomGenerator>

#include <array>

namespace corpus {
namespace {

Depth depthOf(Content content)
{
    switch (content) {
    case Content::blueNote:
    case Content::inkNotes:
    case Content::stamp:
    case Content::signature:
    case Content::highlighter:
    case Content::photograph:
    case Content::wholePhotograph:
        return Depth::color;
    case Content::pencil:
    case Content::thermal:
    case Content::form:
    case Content::shortPencil:
    case Content::greyPhotograph:
        return Depth::gray;
    default:
        return Depth::blackWhite;
    }
}

} // namespace

PageArt drawPage(const PageRecipe &recipe)
{
    Canvas canvas(recipe);
    if (recipe.flaws & Flaw::bleed)
        drawBleedThrough(canvas);
    drawContent(canvas, recipe.content);
    drawFlaws(canvas, recipe.flaws);
    PageArt art = canvas.finished();
    art.isBlank = recipe.content == Content::blank;
    art.depth = depthOf(recipe.content);
    return art;
}

QList<PageRecipe> pageRecipes(quint32 seed, int count)
{
    static const std::array papers{QColor(250, 250, 250), QColor(243, 242, 240),
                                   QColor(236, 226, 196), QColor(225, 225, 222),
                                   QColor(250, 215, 225), QColor(205, 228, 246)};
    static const std::array flaws{Flaw::holes,  Flaw::dust, Flaw::folds, Flaw::bleed,
                                  Flaw::staple, Flaw::edge, Flaw::sliver};
    QRandomGenerator random(seed);
    QList<PageRecipe> recipes;
    for (int i = 0; i < count; ++i) {
        PageRecipe recipe;
        recipe.seed = random.generate();
        const int contents = int(Content::blank);
        recipe.content = i % 3 == 2 ? Content::blank : Content((i - i / 3) % contents);
        recipe.paper = papers[random.bounded(quint32(papers.size()))];
        for (const Flaw flaw : flaws) {
            if (random.bounded(4) == 0)
                recipe.flaws |= flaw;
        }
        recipe.dpi = i % 10 == 3 ? 150 : i % 25 == 7 ? 600 : 300;
        // A4 now and then, as the larger the page the longer it takes to measure.
        if (recipe.content == Content::thermal)
            recipe.sizeMm = {80, 160};
        else if (recipe.dpi == 600)
            recipe.sizeMm = {105, 148};
        else if (i % 4 != 0)
            recipe.sizeMm = {148, 210};
        recipes += recipe;
    }
    return recipes;
}

QString nameOf(Content content)
{
    static const std::array names{
        "print",       "small print",     "bold blocks",      "table",
        "drawing",     "pencil",          "faded receipt",    "form",
        "page number", "short note",      "blue note",        "pencil line",
        "ink notes",   "stamp",           "signature",        "highlighter",
        "photograph",  "grey photograph", "whole photograph", "blank"};
    return QLatin1StringView(names[size_t(content)]);
}

QString nameOf(const PageRecipe &recipe)
{
    static const std::array names{"holes", "dust", "folds", "bleed", "staple", "edge", "sliver"};
    QString name = QStringLiteral("%1 on %2, %3 dpi")
                       .arg(nameOf(recipe.content), recipe.paper.name())
                       .arg(recipe.dpi);
    for (size_t i = 0; i < names.size(); ++i) {
        if (recipe.flaws & Flaw(1 << i))
            name += u' ' + QLatin1StringView(names[i]);
    }
    return name;
}

} // namespace corpus
