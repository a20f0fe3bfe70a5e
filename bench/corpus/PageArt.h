#pragma once

#include <QColor>
#include <QFlags>
#include <QImage>
#include <QList>
#include <QSizeF>
#include <QString>

/// Pages whose every pixel is known, to measure page imaging by.
///
/// A page is drawn as the sheet itself: evenly lit, without noise, filling the whole image. Light,
/// optics and noise are added afterwards, see Exposure.h. Drawing needs a QGuiApplication, one on
/// the "offscreen" platform will do. The same recipe gives the same page.
namespace corpus {

/// What is on the sheet. From `blank` on there is nothing on it but what `Flaw` adds.
enum class Content {
    print,           ///< Paragraphs under a heading.
    smallPrint,      ///< Paragraphs of 6 points.
    boldBlocks,      ///< Big letters, solid black areas, light print on dark.
    table,           ///< Rules, shaded head, figures.
    drawing,         ///< Thin lines and circles.
    pencil,          ///< Lines of handwriting in faint pencil.
    thermal,         ///< A receipt whose print has faded.
    form,            ///< Print, filled in by pencil.
    pageNumber,      ///< A single number at the foot.
    shortNote,       ///< One short line in black ink.
    blueNote,        ///< One short line in blue ink.
    shortPencil,     ///< One short line in faint pencil.
    inkNotes,        ///< Handwriting in blue ink.
    stamp,           ///< Print with a coloured stamp.
    signature,       ///< Print with a signature in blue ink.
    highlighter,     ///< Print with marked words.
    photograph,      ///< Print around a coloured photograph.
    greyPhotograph,  ///< Print around a photograph without colours.
    wholePhotograph, ///< A photograph up to the edges.
    blank,
};

/// What time and handling did to the sheet. None of it is content.
enum class Flaw {
    holes = 1,   ///< Punched at the left edge, the lid showing dark through them.
    dust = 2,    ///< Specks up to 0.5 mm.
    folds = 4,   ///< Two soft creases across.
    bleed = 8,   ///< The print of the other side shines through, mirrored.
    staple = 16, ///< In the upper left corner.
    edge = 32,   ///< A shadow along one edge.
    sliver = 64, ///< A wedge of the lid, at most 3 mm wide, along one edge.
};
Q_DECLARE_FLAGS(Flaws, Flaw)
Q_DECLARE_OPERATORS_FOR_FLAGS(Flaws)

struct PageRecipe {
    quint32 seed = 1;
    Content content = Content::print;
    Flaws flaws;
    QColor paper = QColor(250, 250, 250);
    QSizeF sizeMm = QSizeF(210, 297);
    int dpi = 300;
};

/// The fewest channels that lose nothing of a page.
enum class Depth { blackWhite, gray, color };

/// A drawn page. All images have one size; masks are 8-bit grey, 255 for yes and 0 for no.
struct PageArt {
    QImage page;  ///< RGB32, with the resolution of the recipe.
    QImage ink;   ///< The cores of strokes of every colour, without their soft edges.
    QImage color; ///< Content whose colour matters, highlighter included.
    QImage photo; ///< Photographs.
    QImage paper; ///< Nothing but paper for 0.5 mm around, nor folds, bleed and other flaws.
    bool isBlank = false;
    Depth depth = Depth::blackWhite; ///< As the sheet is, whatever its paper.
};

[[nodiscard]] PageArt drawPage(const PageRecipe &recipe);

/// At least `count` recipes in which contents, papers and flaws mix, a third of them blank.
[[nodiscard]] QList<PageRecipe> pageRecipes(quint32 seed, int count);

/// The recipe in words, for tables.
[[nodiscard]] QString nameOf(Content content);
[[nodiscard]] QString nameOf(const PageRecipe &recipe);

} // namespace corpus
