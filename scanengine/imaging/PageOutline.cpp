#include "scanengine/imaging/PageOutline.h"

#include "scanengine/imaging/LidSearch.h"
#include "scanengine/imaging/PixelView.h"
#include "scanengine/imaging/SheetFit.h"

#include <algorithm>
#include <array>
#include <cmath>
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

/// The part of the convex `polygon` to the right of the line from `start` to `end`, on which is
/// inside for the side of a polygon that goes clockwise.
QPolygonF clipped(const QPolygonF &polygon, QPointF start, QPointF end)
{
    const QPointF side = end - start;
    const auto inside = [&](QPointF at) {
        return side.x() * (at.y() - start.y()) - side.y() * (at.x() - start.x());
    };
    QPolygonF part;
    for (qsizetype i = 0; i < polygon.size(); ++i) {
        const QPointF from = polygon[i];
        const QPointF to = polygon[(i + 1) % polygon.size()];
        const double before = inside(from);
        const double after = inside(to);
        if (before >= 0)
            part.append(from);
        if ((before < 0) != (after < 0))
            part.append(from + (to - from) * (before / (before - after)));
    }
    return part;
}

double areaOf(const QPolygonF &polygon)
{
    double doubled = 0;
    for (qsizetype i = 0; i < polygon.size(); ++i) {
        const QPointF from = polygon[i];
        const QPointF to = polygon[(i + 1) % polygon.size()];
        doubled += from.x() * to.y() - from.y() * to.x();
    }
    return std::abs(doubled) / 2;
}

/// How much of `a` lies in `b`, as a share of `a`. Exact also for outlines that share sides.
double overlap(const PageOutline &a, const PageOutline &b)
{
    const QPolygonF frame = b.corners();
    QPolygonF common = a.corners();
    const double area = areaOf(common);
    for (qsizetype i = 0; i < frame.size(); ++i)
        common = clipped(common, frame[i], frame[(i + 1) % frame.size()]);
    return area <= 0 ? 0 : areaOf(common) / area;
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
