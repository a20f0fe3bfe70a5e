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
#include <utility>

using namespace corpus;
using namespace scanengine;

namespace bench {
namespace {

/// The part of a page's ink pixels that may be lost to noise.
constexpr double tolerance = 0.002;

/// Sums over pages.
struct Row {
    int pages = 0;
    int takenForBlank = 0;
    int falseBlanks = 0;
    int missedBlanks = 0;
    CleaningMeasures cleaning;
    int pagesLosingInk = 0;
    double worstLoss = 0;
    double deviation = 0;
    double photoError = -1;
    double leastColor = 9;
    BlackWhiteMeasures blackWhite;
    int pagesLosingInBlackWhite = 0;
    std::array<int, 3> depths{}; ///< Pages that became black and white, grey, coloured.
};

/// In the order of the table: the contents, then the seeds, then all.
using Rows = std::map<std::pair<int, QString>, Row>;

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

/// A page as it was scanned and what the engine made of it.
struct Outcome {
    bool isBlank = false;
    bool isTakenForBlank = false;
    CleaningMeasures cleaning;
    BlackWhiteMeasures blackWhite;
    Depth depth = Depth::color;
};

double share(double part, double whole)
{
    return whole > 0 ? part / whole : 0;
}

Outcome outcomeOf(const PageRecipe &recipe, const Pictures &pictures)
{
    const PageArt art = drawPage(recipe);
    Exposure exposure = exposureOf(recipe.seed);
    // Without colours nobody can tell what was coloured.
    if (art.depth == Depth::color)
        exposure.isGrey = false;
    const QImage seen = softened(art.page, exposure);
    const QImage scan = exposed(art.page, exposure);
    const PageSurvey survey = surveyOf(scan);
    Outcome outcome;
    outcome.isBlank = art.isBlank;
    outcome.isTakenForBlank = isBlank(survey);
    if (outcome.isTakenForBlank != art.isBlank)
        pictures.save(scan, recipe, "blank test");

    const QImage cleaned = withCleanBackground(scan, survey);
    outcome.cleaning = measureCleaning(art, seen, cleaned);
    const CleaningMeasures &cleaning = outcome.cleaning;
    if (share(cleaning.lostInk, cleaning.inkPixels) > tolerance || cleaning.photoError > 12 ||
        cleaning.paperDeviation > 4) {
        pictures.save(scan, recipe, "scanned");
        pictures.save(cleaned, recipe, "cleaned");
    }

    outcome.depth = depthOf(colorsOf(cleaned, survey));
    if (!art.isBlank && outcome.depth < art.depth)
        pictures.save(scan, recipe, "colours lost");

    const QImage bits = inBlackAndWhite(scan);
    outcome.blackWhite = measureBlackWhite(art, seen, bits);
    const BlackWhiteMeasures &blackWhite = outcome.blackWhite;
    if (share(blackWhite.lostInk, blackWhite.inkPixels) > tolerance || blackWhite.salt > 500)
        pictures.save(bits, recipe, "black and white");
    return outcome;
}

void add(Row &row, const Outcome &outcome)
{
    ++row.pages;
    row.takenForBlank += outcome.isTakenForBlank;
    row.falseBlanks += outcome.isTakenForBlank && !outcome.isBlank;
    row.missedBlanks += outcome.isBlank && !outcome.isTakenForBlank;

    const CleaningMeasures &cleaning = outcome.cleaning;
    const double loss = share(cleaning.lostInk, cleaning.inkPixels);
    row.cleaning.inkPixels += cleaning.inkPixels;
    row.cleaning.lostInk += cleaning.lostInk;
    row.cleaning.paperPixels += cleaning.paperPixels;
    row.cleaning.whitePaper += cleaning.whitePaper;
    row.pagesLosingInk += loss > tolerance;
    row.worstLoss = std::max(row.worstLoss, loss);
    row.deviation = std::max(row.deviation, cleaning.paperDeviation);
    row.photoError = std::max(row.photoError, cleaning.photoError);
    if (cleaning.colorKept >= 0)
        row.leastColor = std::min(row.leastColor, cleaning.colorKept);

    const BlackWhiteMeasures &blackWhite = outcome.blackWhite;
    row.blackWhite.inkPixels += blackWhite.inkPixels;
    row.blackWhite.lostInk += blackWhite.lostInk;
    row.blackWhite.paperPixels += blackWhite.paperPixels;
    row.blackWhite.salt += blackWhite.salt;
    row.pagesLosingInBlackWhite += share(blackWhite.lostInk, blackWhite.inkPixels) > tolerance;
    ++row.depths[size_t(outcome.depth)];
}

void print(const QString &name, const Row &row)
{
    std::printf("%-18s %5d %5d %5d %6d | %8.4f%% %5d %6.2f%% %5.1f%% %6.2f %6.2f | %7.3f%% %5d "
                "%7.1fm | %d/%d/%d",
                qPrintable(name), row.pages, row.takenForBlank, row.falseBlanks, row.missedBlanks,
                100 * share(row.cleaning.lostInk, row.cleaning.inkPixels), row.pagesLosingInk,
                100 * row.worstLoss, 100 * share(row.cleaning.whitePaper, row.cleaning.paperPixels),
                row.deviation, row.photoError,
                100 * share(row.blackWhite.lostInk, row.blackWhite.inkPixels),
                row.pagesLosingInBlackWhite,
                1e6 * share(row.blackWhite.salt, row.blackWhite.paperPixels), row.depths[0],
                row.depths[1], row.depths[2]);
    if (row.leastColor < 9)
        std::printf(" (%.2f)", row.leastColor);
    std::printf("\n");
}

} // namespace

void printToneQuality(const QList<quint32> &seeds, int count, const QString &folder)
{
    const Pictures pictures(folder);
    Rows rows;
    for (const quint32 seed : seeds) {
        for (const PageRecipe &recipe : pageRecipes(seed, count)) {
            const Outcome outcome = outcomeOf(recipe, pictures);
            constexpr int afterContents = 100;
            add(rows[{int(recipe.content), nameOf(recipe.content)}], outcome);
            add(rows[{afterContents, QStringLiteral("~ seed %1").arg(seed)}], outcome);
            add(rows[{afterContents + 1, QStringLiteral("~~ all")}], outcome);
        }
    }
    std::printf("\nTones. A page loses ink when more than %.1f %% of its ink pixels are lost.\n\n",
                100 * tolerance);
    std::printf("%-18s %5s %5s %5s %6s | %9s %5s %7s %6s %6s %6s | %8s %5s %8s | %s\n", "", "pages",
                "blank", "false", "missed", "ink lost", "pages", "worst", "white", "sd", "photo",
                "bw lost", "pages", "bw salt", "bw/grey/colour (colour kept)");
    for (const auto &[name, row] : rows)
        print(name.second, row);
    std::fflush(stdout);
}

} // namespace bench
