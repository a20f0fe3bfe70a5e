#include "scanengine/imaging/SheetFit.h"

#include "scanengine/imaging/EdgeKind.h"
#include "scanengine/imaging/SideFit.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <utility>

namespace scanengine {
namespace {

constexpr double steepestAngle = 15;
constexpr double radiansPerDegree = std::numbers::pi / 180;
/// What is nearer to the sides of the bed counts as lying on them.
constexpr double bedSideMm = 1.5;
/// An edge this far from the coarse outline is still looked for.
constexpr double reachMm = 3;
/// The coarse outline of a straight side lies within a strip of this width for this share of it.
constexpr double stripMm = 1.3;
constexpr double leastInStrip = 0.3;
/// Dust beside a sheet makes no more of its outline bulge than this; more may be content.
constexpr double largestBulgeMm = 8;
constexpr double leastBulgeMm = 0.5;
/// A side is known if its edge is seen on this share of it.
constexpr double leastSupport = 0.6;
/// A side is taken to lie on the bed's own if less of it than this is on the bed.
constexpr double leastVisible = 0.45;
/// A smaller part still tells the angle, if its edge is clear, and this much where the side is.
constexpr double leastPart = 0.2;
constexpr double leastPartMm = 5;
constexpr double leastPartSupport = 0.85;
/// The most that sides of one sheet are out of true with each other, in degrees.
constexpr double mostDisagreement = 0.6;
/// The most lid inside of an outline, for folded corners and torn edges.
constexpr double mostLidInside = 0.04;
/// Between paper and lid, in levels, for an edge that isn't straight to be one for sure.
constexpr double sureContrast = 14;
constexpr double leastContrastShare = 0.93;
/// Paper is convex: the least share of its hull that an item without straight sides covers.
constexpr double leastConvexity = 0.9;

using Contour = std::vector<cv::Point>;

/// The centre of a pixel of a contour, from the top left corner of the bed view.
cv::Point2d centerOf(cv::Point pixel)
{
    return {pixel.x + 0.5, pixel.y + 0.5};
}

bool isAtSide(cv::Point pixel, cv::Size size, double slack)
{
    return pixel.x < slack || pixel.y < slack || pixel.x >= size.width - slack ||
           pixel.y >= size.height - slack;
}

/// How sharply `points` gather on lines along the axes of `degrees`.
double gathering(const std::vector<cv::Point2d> &points, double degrees, std::vector<float> &bins)
{
    const Axes axes(degrees);
    double sum = 0;
    for (const cv::Point2d axis : {axes.right, axes.down}) {
        std::fill(bins.begin(), bins.end(), 0.0F);
        const double middle = double(bins.size()) / 2;
        for (const cv::Point2d &point : points)
            ++bins[size_t(point.dot(axis) + middle)];
        for (const float bin : bins)
            sum += double(bin) * double(bin);
    }
    return sum;
}

double angleOf(const std::vector<cv::Point2d> &points, cv::Size size)
{
    std::vector<float> bins(size_t(2 * std::hypot(size.width, size.height)) + 4);
    double best = 0;
    for (const auto &[reach, step] : {
             std::pair{steepestAngle, 0.5},
             {0.5,           0.1}
    }) {
        double most = -1;
        const double middle = best;
        for (double angle = middle - reach; angle <= middle + reach + 1e-9; angle += step) {
            const double here = gathering(points, angle, bins);
            if (here > most) {
                most = here;
                best = angle;
            }
        }
    }
    return best;
}

/// The sides in the order left, right, top, bottom.
std::array<SideGuess, 4> sidesOf(const Extent &extent, const Axes &axes)
{
    return {
        SideGuess{-axes.right, axes.down,  -extent.left,  extent.top,  extent.bottom},
        SideGuess{axes.right,  axes.down,  extent.right,  extent.top,  extent.bottom},
        SideGuess{-axes.down,  axes.right, -extent.top,   extent.left, extent.right },
        SideGuess{axes.down,   axes.right, extent.bottom, extent.left, extent.right },
    };
}

class SheetSearch {
public:
    SheetSearch(const QImage &image, const BedView &bed, const LidGuess &guess,
                const Contour &contour)
        : m_image(image), m_bed(bed), m_guess(guess), m_contour(contour)
    {
    }

    Sheet run()
    {
        const double slack = bedSideMm * m_bed.pixelsPerMm;
        for (const cv::Point pixel : m_contour) {
            if (!isAtSide(pixel, m_bed.slope.size(), slack))
                m_free.push_back(centerOf(pixel));
        }
        Sheet sheet;
        if (double(m_free.size()) < 8 * m_bed.pixelsPerMm)
            return sheet;
        const double coarse = angleOf(m_free, m_bed.slope.size());
        if (fitStraight(coarse, sheet))
            return sheet;
        sheet = {};
        sheet.extent = extentAlong(Axes(0));
        sheet.isSure = isConvex() && hasContrast();
        return sheet;
    }

private:
    Extent extentAlong(const Axes &axes) const
    {
        Extent extent;
        for (const cv::Point pixel : m_contour)
            extent.include(axes, centerOf(pixel));
        return extent;
    }

    /// How far out the straight part of the outline lies that `guess` surrounds: dust that touches
    /// a sheet bulges its outline.
    double straightPart(const SideGuess &guess) const
    {
        std::vector<double> outermost;
        for (const cv::Point pixel : m_contour)
            outermost.push_back(centerOf(pixel).dot(guess.outward));
        std::sort(outermost.rbegin(), outermost.rend());
        const double strip = stripMm * m_bed.pixelsPerMm;
        const auto enough = std::max(size_t(1), size_t(leastInStrip * (guess.to - guess.from)));
        for (size_t i = 0; i + enough <= outermost.size(); ++i) {
            if (outermost[i] - outermost[i + enough - 1] <= strip)
                return outermost[i];
        }
        return guess.distance;
    }

    /// Looks for the edge again where the outline is straight, if what bulges it is mere dust.
    void fitWithinBulge(SideGuess &guess, SideFit &fit) const
    {
        SideGuess inner = guess;
        inner.distance = straightPart(guess);
        const double outside = inner.distance + leastBulgeMm * m_bed.pixelsPerMm;
        const auto bulge = std::count_if(m_contour.begin(), m_contour.end(), [&](cv::Point pixel) {
            return centerOf(pixel).dot(guess.outward) > outside;
        });
        if (bulge == 0 || double(bulge) > largestBulgeMm * m_bed.pixelsPerMm)
            return;
        const SideFit again = fitSide(m_bed, inner, reachMm);
        if (isSeen(again)) {
            guess = inner;
            fit = again;
        }
    }

    bool fitStraight(double coarse, Sheet &sheet)
    {
        const Axes axes(coarse);
        auto guesses = sidesOf(extentAlong(axes), axes);
        std::array<SideFit, 4> fits;
        double weights = 0;
        double tilts = 0;
        for (size_t i = 0; i < 4; ++i) {
            fits[i] = fitSide(m_bed, guesses[i], reachMm);
            if (!isSeen(fits[i]))
                fitWithinBulge(guesses[i], fits[i]);
            if (isSeen(fits[i])) {
                weights += fits[i].length * fits[i].length;
                tilts += fits[i].length * fits[i].length * turn(i, fits[i]);
            }
        }
        if (!isRectangle(guesses, fits))
            return false;
        const double mean = weights > 0 ? tilts / weights : 0;
        for (size_t i = 0; i < 4; ++i) {
            // A short side can't tell an angle well, but is where it is.
            const double tolerance = mostDisagreement + 15.0 / std::max(15.0, fits[i].length);
            if (isSeen(fits[i]) && std::abs(turn(i, fits[i]) - mean) > tolerance)
                return false;
        }
        sheet.angle = coarse + mean;
        if (std::abs(sheet.angle) > steepestAngle)
            return false;
        sheet.extent = fittedExtent(fits, guesses, sheet.angle);
        sheet.isStraight = true;
        sheet.isComplete = std::none_of(fits.begin(), fits.end(), [](const SideFit &fit) {
            return !isSeen(fit) && fit.visible >= leastVisible;
        });
        sheet.isSure = lidInside(sheet) <= mostLidInside;
        return sheet.isSure;
    }

    static bool isSeen(const SideFit &fit)
    {
        return fit.support >= (fit.visible >= leastVisible ? leastSupport : leastPartSupport) &&
               fit.visible >= leastPart;
    }

    /// Whether the edge of a side that lies past the bed for the most part is clear where it is
    /// seen.
    bool isPartSeen(const SideFit &fit, const SideGuess &guess) const
    {
        const double mm = m_bed.pixelsPerMm;
        return fit.visible < leastVisible && fit.support >= leastPartSupport &&
               fit.length >= leastPartMm * mm &&
               std::abs(fit.distance + fit.tilt * fit.place - guess.distance) < 2 * mm;
    }

    /// The turn that side `i` asks for, in degrees clockwise.
    static double turn(size_t i, const SideFit &fit)
    {
        // Going down, the right side moves left when the page turns clockwise; going right, the
        // bottom side moves down.
        const double sign = i == 0 || i == 3 ? 1 : -1;
        return sign * std::atan(fit.tilt) / radiansPerDegree;
    }

    /// Whether all sides are seen, or lie on the sides of the bed, and are no print. Only one may
    /// be missing, torn or dark as the lid, if all of the item's outline is clear.
    bool isRectangle(const std::array<SideGuess, 4> &guesses,
                     const std::array<SideFit, 4> &fits) const
    {
        int seen = 0;
        int missing = 0;
        int printed = 0;
        int steps = 0;
        for (size_t i = 0; i < 4; ++i) {
            if (!isSeen(fits[i])) {
                missing += fits[i].visible >= leastVisible ? 1 : 0;
                continue;
            }
            const EdgeKind kind = edgeKind(m_image, m_bed, guesses[i], fits[i]);
            ++seen;
            printed += kind == EdgeKind::print ? 1 : 0;
            steps += kind == EdgeKind::step ? 1 : 0;
        }
        if (missing > 0)
            return missing == 1 && seen >= 2 && steps == seen && hasContrast();
        // A dark picture may reach one side and look like the lid there.
        if (printed > 1 || (printed == 1 && seen < 4))
            return false;
        return seen >= 2 || steps == 1;
    }

    bool isConvex() const
    {
        Contour hull;
        cv::convexHull(m_contour, hull);
        return cv::contourArea(m_contour) >= leastConvexity * cv::contourArea(hull);
    }

    /// The extent along the axes of `angle`: by the edges where they are seen, else by the contour.
    Extent fittedExtent(const std::array<SideFit, 4> &fits, const std::array<SideGuess, 4> &guesses,
                        double angle) const
    {
        const Axes axes(angle);
        Extent extent = extentAlong(axes);
        std::array<double *, 4> limits{&extent.left, &extent.right, &extent.top, &extent.bottom};
        const auto straight = sidesOf(extent, axes);
        for (size_t i = 0; i < 4; ++i) {
            const SideGuess &guess = guesses[i];
            if (!isSeen(fits[i]) && !isPartSeen(fits[i], guess))
                continue;
            const double half = isSeen(fits[i]) ? fits[i].length / 2 : 0;
            const double middle = isSeen(fits[i]) ? 0 : fits[i].place;
            double most = -1e9;
            for (const double s : {middle - half, middle + half}) {
                const cv::Point2d point = guess.outward * (fits[i].distance + fits[i].tilt * s) +
                                          guess.along * ((guess.from + guess.to) / 2 + s);
                most = std::max(most, point.dot(straight[i].outward));
            }
            *limits[i] = i % 2 == 0 ? -most : most;
        }
        return extent;
    }

    double lidInside(const Sheet &sheet) const
    {
        const Axes axes(sheet.angle);
        const double inset = 1.2 * m_bed.pixelsPerMm;
        Contour corners;
        for (const auto &[u, v] : {
                 std::pair{sheet.extent.left + inset,  sheet.extent.top + inset   },
                 {sheet.extent.right - inset, sheet.extent.top + inset   },
                 {sheet.extent.right - inset, sheet.extent.bottom - inset},
                 {sheet.extent.left + inset,  sheet.extent.bottom - inset}
        }) {
            const cv::Point2d corner = axes.right * u + axes.down * v;
            corners.emplace_back(int(std::lround(corner.x)), int(std::lround(corner.y)));
        }
        cv::Mat inside(m_bed.slope.size(), CV_8UC1, cv::Scalar(0));
        cv::fillConvexPoly(inside, corners, 255);
        const int all = cv::countNonZero(inside);
        if (all == 0)
            return 1;
        // Plain spots of the page may look like lid; what the item encloses is not.
        cv::drawContours(inside, std::vector<Contour>(1, m_contour), 0, 0, cv::FILLED);
        return cv::countNonZero(inside & m_guess.lid) / double(all);
    }

    /// Whether paper and lid differ all along the contour.
    bool hasContrast() const
    {
        cv::Mat item(m_bed.slope.size(), CV_8UC1, cv::Scalar(0));
        cv::drawContours(item, std::vector<Contour>(1, m_contour), 0, 255, cv::FILLED);
        const int reach = int(std::lround(2 * m_bed.pixelsPerMm));
        const cv::Mat disc =
            cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * reach + 1, 2 * reach + 1});
        cv::Mat inside;
        cv::Mat outside;
        cv::erode(item, inside, disc);
        cv::dilate(item, outside, disc);
        outside = ~outside;
        int differing = 0;
        int judged = 0;
        for (size_t i = 0; i < m_free.size(); i += 3) {
            const cv::Point at(int(m_free[i].x), int(m_free[i].y));
            const cv::Rect near =
                cv::Rect(at.x - 2 * reach, at.y - 2 * reach, 4 * reach, 4 * reach) &
                cv::Rect({0, 0}, item.size());
            if (cv::countNonZero(inside(near)) == 0 || cv::countNonZero(outside(near)) == 0)
                continue;
            const cv::Scalar difference = cv::mean(m_bed.color(near), inside(near)) -
                                          cv::mean(m_bed.color(near), outside(near));
            ++judged;
            differing += cv::norm(difference, cv::NORM_INF) > sureContrast ? 1 : 0;
        }
        return judged > 10 && differing >= leastContrastShare * judged;
    }

    const QImage &m_image;
    const BedView &m_bed;
    const LidGuess &m_guess;
    const Contour &m_contour;
    std::vector<cv::Point2d> m_free; ///< The contour apart from the sides of the bed.
};

} // namespace

Axes::Axes(double degrees)
    : right(std::cos(degrees * radiansPerDegree), std::sin(degrees * radiansPerDegree)),
      down(-right.y, right.x)
{
}

void Extent::include(const Axes &axes, cv::Point2d point)
{
    const double u = point.dot(axes.right);
    const double v = point.dot(axes.down);
    left = std::min(left, u);
    right = std::max(right, u);
    top = std::min(top, v);
    bottom = std::max(bottom, v);
}

double Extent::area() const
{
    return std::max(0.0, right - left) * std::max(0.0, bottom - top);
}

Sheet fitSheet(const QImage &image, const BedView &bed, const LidGuess &guess,
               const std::vector<cv::Point> &contour)
{
    return SheetSearch(image, bed, guess, contour).run();
}

} // namespace scanengine
