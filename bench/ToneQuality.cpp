#include "bench/ToneQuality.h"

#include "bench/ToneMeasures.h"
#include "bench/corpus/Exposure.h"
#include "scanengine/imaging/BlackWhite.h"
#include "scanengine/imaging/BlankTest.h"
#include "scanengine/imaging/CleanBackground.h"
#include "scanengine/imaging/PageColors.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

using namespace corpus;
using namespace scanengine;

namespace bench {
namespace {

/// The part of a page's ink pixels that may be lost to noise.
constexpr double tolerance = 0.002;

/// Sums over the pages of one content.
struct Row {
    int pages = 0;
    int takenForBlank = 0;
    CleaningMeasures cleaning;
    int pagesLosingInk = 0;
    double worstLoss = 0;
    double deviation = 0;
    double photoError = -1;
    double leastColor = 9;
    BlackWhiteMeasures blackWhite;
    std::array<int, 3> depths{}; ///< Pages that became black and white, grey, coloured.
};

Depth depthOf(ColorMode mode)
{
    return mode == ColorMode::color  ? Depth::color
           : mode == ColorMode::gray ? Depth::gray
                                     : Depth::blackWhite;
}

class Pictures {
public:
    explicit Pictures(const QString &folder) : m_folder(folder) {}

    void save(const QImage &image, const PageRecipe &recipe, const char *what) const
    {
        if (m_folder.isEmpty())
            return;
        QDir().mkpath(m_folder);
        image.save(QStringLiteral("%1/%2 %3 %4.png")
                       .arg(m_folder)
                       .arg(recipe.seed)
                       .arg(nameOf(recipe), QLatin1StringView(what)));
    }

private:
    QString m_folder;
};

void add(Row &row, const PageRecipe &recipe, const Pictures &pictures)
{
    const PageArt art = drawPage(recipe);
    Exposure exposure = exposureOf(recipe.seed);
    // Without colours nobody can tell what was coloured.
    if (art.depth == Depth::color)
        exposure.isGrey = false;
    const QImage scan = exposed(art.page, exposure);
    ++row.pages;
    const PageSurvey survey = surveyOf(scan);
    const bool isTakenForBlank = isBlank(survey);
    row.takenForBlank += isTakenForBlank;
    if (isTakenForBlank != art.isBlank)
        pictures.save(scan, recipe, "blank test");

    const QImage seen = softened(art.page, exposure);
    const QImage cleaned = withCleanBackground(scan, survey);
    const CleaningMeasures measures = measureCleaning(art, seen, cleaned);
    const double loss = measures.inkPixels > 0 ? measures.lostInk / measures.inkPixels : 0;
    row.cleaning.inkPixels += measures.inkPixels;
    row.cleaning.lostInk += measures.lostInk;
    row.cleaning.paperPixels += measures.paperPixels;
    row.cleaning.whitePaper += measures.whitePaper;
    row.pagesLosingInk += loss > tolerance;
    row.worstLoss = std::max(row.worstLoss, loss);
    row.deviation = std::max(row.deviation, measures.paperDeviation);
    row.photoError = std::max(row.photoError, measures.photoError);
    if (measures.colorKept >= 0)
        row.leastColor = std::min(row.leastColor, measures.colorKept);
    const bool isPaperUneven = measures.paperDeviation > 4;
    if (loss > tolerance || measures.photoError > 12 || isPaperUneven) {
        pictures.save(scan, recipe, "scanned");
        pictures.save(cleaned, recipe, "cleaned");
    }

    const auto depth = depthOf(colorsOf(cleaned, survey));
    ++row.depths[size_t(depth)];
    if (!art.isBlank && depth < art.depth)
        pictures.save(scan, recipe, "colours lost");

    const QImage bits = inBlackAndWhite(scan);
    const BlackWhiteMeasures blackWhite = measureBlackWhite(art, seen, bits);
    row.blackWhite.inkPixels += blackWhite.inkPixels;
    row.blackWhite.lostInk += blackWhite.lostInk;
    row.blackWhite.paperPixels += blackWhite.paperPixels;
    row.blackWhite.salt += blackWhite.salt;
    if (blackWhite.lostInk > 0.05 * blackWhite.inkPixels || blackWhite.salt > 500)
        pictures.save(bits, recipe, "black and white");
}

double share(double part, double whole)
{
    return whole > 0 ? part / whole : 0;
}

void print(const std::map<Content, Row> &rows)
{
    std::printf("%-18s %5s %6s | %9s %5s %7s %6s %6s %6s | %8s %8s | %s\n", "tones", "pages",
                "blank", "ink lost", ">tol", "worst", "white", "sd", "photo", "bw lost", "bw salt",
                "bw/grey/colour (colour kept)");
    int falseBlanks = 0;
    int missedBlanks = 0;
    int losing = 0;
    for (const auto &[content, row] : rows) {
        const bool isBlank = content == Content::blank;
        (isBlank ? missedBlanks : falseBlanks) +=
            isBlank ? row.pages - row.takenForBlank : row.takenForBlank;
        losing += row.pagesLosingInk;
        std::printf("%-18s %5d %6d | %8.4f%% %5d %6.2f%% %5.1f%% %6.2f %6.2f | %7.3f%% %7.1fm | "
                    "%d/%d/%d",
                    qPrintable(nameOf(content)), row.pages, row.takenForBlank,
                    100 * share(row.cleaning.lostInk, row.cleaning.inkPixels), row.pagesLosingInk,
                    100 * row.worstLoss,
                    100 * share(row.cleaning.whitePaper, row.cleaning.paperPixels), row.deviation,
                    row.photoError, 100 * share(row.blackWhite.lostInk, row.blackWhite.inkPixels),
                    1e6 * share(row.blackWhite.salt, row.blackWhite.paperPixels), row.depths[0],
                    row.depths[1], row.depths[2]);
        if (row.leastColor < 9)
            std::printf(" (%.2f)", row.leastColor);
        std::printf("\n");
    }
    std::printf("false blanks %d, missed blanks %d, pages losing more than %.1f %% of their ink "
                "pixels %d\n",
                falseBlanks, missedBlanks, 100 * tolerance, losing);
}

} // namespace

void printToneQuality(std::uint32_t seed, int count, const QString &folder)
{
    const Pictures pictures(folder);
    std::map<Content, Row> rows;
    for (const PageRecipe &recipe : pageRecipes(seed, count))
        add(rows[recipe.content], recipe, pictures);
    print(rows);
    std::fflush(stdout);
}

} // namespace bench
