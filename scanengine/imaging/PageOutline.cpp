#include "scanengine/imaging/PageOutline.h"

#include "scanengine/imaging/LidSearch.h"
#include "scanengine/imaging/PixelView.h"
#include "scanengine/imaging/SheetFit.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <vector>

namespace scanengine {
namespace {

constexpr double searchDpi = 75;
/// Breaks in a page's edge that are tried to be bridged, in millimetres.
constexpr std::array gapsMm{0.7, 1.8, 4.0};
constexpr int mostSpecks = 25;
constexpr double largestSpeckMm = 6;

struct Answer {
    PageOutline outline; ///< In pixels of the bed view.
    double area = 0;
    bool isComplete = false; ///< Every side is an edge or lies on the bed's.
};

PageOutline outlineAlong(const Extent &extent, double angle, bool isStraight)
{
    const Axes axes(angle);
    const cv::Point2d center = axes.right * ((extent.left + extent.right) / 2) +
                               axes.down * ((extent.top + extent.bottom) / 2);
    return {
        {center.x,                   center.y                  },
        {extent.right - extent.left, extent.bottom - extent.top},
        angle,
        isStraight
    };
}

/// One outline for all sheets: along their edges if they lie alike.
std::optional<Answer> judged(const QImage &image, const BedView &bed, const LidGuess &guess)
{
    if (guess.specks > mostSpecks || guess.largestSpeck > largestSpeckMm)
        return std::nullopt;
    std::vector<Sheet> sheets;
    for (const std::vector<cv::Point> &contour : guess.items) {
        sheets.push_back(fitSheet(image, bed, guess, contour));
        if (!sheets.back().isSure)
            return std::nullopt;
    }
    const double angle = sheets.front().angle;
    const bool areAlike = std::all_of(sheets.begin(), sheets.end(), [&](const Sheet &sheet) {
        return sheet.isStraight && std::abs(sheet.angle - angle) < 0.4;
    });
    const bool areComplete = std::all_of(sheets.begin(), sheets.end(),
                                         [](const Sheet &sheet) { return sheet.isComplete; });
    if (sheets.size() == 1)
        return Answer{outlineAlong(sheets[0].extent, angle, sheets[0].isStraight),
                      sheets[0].extent.area(), areComplete};

    const Axes common(areAlike ? angle : 0);
    Extent all;
    for (const Sheet &sheet : sheets) {
        const Axes own(sheet.angle);
        for (const double u : {sheet.extent.left, sheet.extent.right}) {
            for (const double v : {sheet.extent.top, sheet.extent.bottom})
                all.include(common, own.right * u + own.down * v);
        }
    }
    Answer answer{outlineAlong(all, areAlike ? angle : 0, areAlike), all.area(), areComplete};
    answer.outline.sheets = int(sheets.size());
    return answer;
}

/// How much of `a` lies in `b`, as a share of `a`.
double overlap(const PageOutline &a, const PageOutline &b)
{
    const auto polygon = [](const PageOutline &outline) {
        std::vector<cv::Point2f> points;
        for (const QPointF corner : outline.corners())
            points.emplace_back(float(corner.x()), float(corner.y()));
        return points;
    };
    std::vector<cv::Point2f> common;
    const auto first = polygon(a);
    const double area = cv::contourArea(first);
    return area <= 0 ? 0 : double(cv::intersectConvexConvex(first, polygon(b), common)) / area;
}

/// The smallest of the answers if all others hold it: they take some of the lid for paper. Only
/// the best kind of answer counts.
std::optional<PageOutline> agreed(std::vector<Answer> answers)
{
    const auto isBetter = [](const Answer &a, const Answer &b) {
        return std::pair(a.isComplete, a.outline.hasStraightEdges) >
               std::pair(b.isComplete, b.outline.hasStraightEdges);
    };
    std::sort(answers.begin(), answers.end(), [&](const Answer &a, const Answer &b) {
        return isBetter(a, b) || (!isBetter(b, a) && a.area < b.area);
    });
    for (const Answer &answer : answers) {
        if (!isBetter(answers.front(), answer) &&
            overlap(answers.front().outline, answer.outline) < 0.97)
            return std::nullopt;
    }
    return answers.empty() ? std::nullopt : std::optional(answers.front().outline);
}

} // namespace

QPolygonF PageOutline::corners() const
{
    const Axes axes(angle);
    const QPointF right = QPointF(axes.right.x, axes.right.y) * (size.width() / 2);
    const QPointF down = QPointF(axes.down.x, axes.down.y) * (size.height() / 2);
    return QList<QPointF>{center - right - down, center + right - down, center + right + down,
                          center - right + down};
}

std::optional<PageOutline> findPage(const QImage &bed)
{
    const ReducedImage small = reduced(bed, searchDpi);
    if (small.pixels.empty())
        return std::nullopt;
    const BedView view = bedView(small);
    for (const double gap : gapsMm) {
        std::vector<Answer> answers;
        for (const LidGuess &guess : lidGuesses(view, gap)) {
            if (auto answer = judged(bed, view, guess))
                answers.push_back(*answer);
        }
        if (auto outline = agreed(std::move(answers))) {
            outline->center *= small.factor;
            outline->size *= small.factor;
            return outline;
        }
    }
    return std::nullopt;
}

} // namespace scanengine
