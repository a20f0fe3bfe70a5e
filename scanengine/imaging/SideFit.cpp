#include "scanengine/imaging/SideFit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace scanengine {
namespace {

/// Samples across the side are this far apart, in pixels.
constexpr double step = 0.5;
/// Samples along the side.
constexpr double spacingMm = 1.2;
/// Corners are rounded, folded or blurred.
constexpr double cornerMm = 2;
/// How far an edge may lie beside the line and still belong to it.
constexpr double toleranceMm = 0.35;
/// The most that a side is out of line with the guess: 3 degrees.
constexpr double mostTilt = 0.052;
/// A shadow at most this wide may lie between the lid and the paper.
constexpr double widestShadowMm = 1.8;
/// An edge at least this steep, relative to the steepest on the same line across the side.
constexpr double leastRelativeSlope = 0.25;
/// The share of the side on which a line across is enough of an edge to prefer it.
constexpr double leastPreferredSupport = 0.6;

/// A place where the colour changes on the way from outside to inside.
struct Edge {
    double along = 0;
    double distance = 0;
    bool isRising = false; ///< Towards light.
};

struct Line {
    double distance = 0;
    double tilt = 0;
    size_t support = 0;
    double place = 0; ///< The middle of its edges, from that of the side.
};

class SideSearch {
public:
    SideSearch(const BedView &bed, const SideGuess &guess, double reachMm)
        : m_bed(bed), m_guess(guess), m_reach(reachMm * bed.pixelsPerMm),
          m_middle((guess.from + guess.to) / 2)
    {
    }

    SideFit run()
    {
        collect();
        SideFit fit;
        const size_t places = m_visible + m_hidden;
        fit.visible = places == 0 ? 0 : double(m_visible) / double(places);
        if (m_visible < 4)
            return fit;
        const Line line = refined(chosen());
        fit.distance = line.distance;
        fit.tilt = line.tilt;
        fit.place = line.place;
        fit.support = double(line.support) / double(m_visible);
        fit.length = double(line.support) * spacingMm * m_bed.pixelsPerMm;
        return fit;
    }

private:
    cv::Point2d point(double along, double distance) const
    {
        return m_guess.outward * distance + m_guess.along * along;
    }

    bool isOnBed(cv::Point2d at) const
    {
        return at.x >= 1 && at.y >= 1 && at.x < m_bed.color.cols - 2 && at.y < m_bed.color.rows - 2;
    }

    void collect()
    {
        const double spacing = spacingMm * m_bed.pixelsPerMm;
        const double corner =
            std::min(cornerMm * m_bed.pixelsPerMm, (m_guess.to - m_guess.from) / 8);
        for (double s = m_guess.from + corner; s <= m_guess.to - corner; s += spacing) {
            // The edge needs a lid outside of it to be seen.
            if (!isOnBed(point(s, m_guess.distance + 1.2 * m_bed.pixelsPerMm)) ||
                !isOnBed(point(s, m_guess.distance - m_reach))) {
                ++m_hidden;
                continue;
            }
            ++m_visible;
            collectAt(s);
        }
    }

    void collectAt(double along)
    {
        const int count = int(2 * m_reach / step) + 1;
        m_profile.clear();
        for (int i = 0; i < count; ++i)
            m_profile.push_back(
                colorAt(m_bed, point(along, m_guess.distance + m_reach - i * step)));
        m_slopes.assign(size_t(count), cv::Vec3f());
        m_steepness.assign(size_t(count), 0);
        for (size_t i = 2; i + 2 < size_t(count); ++i) {
            m_slopes[i] = (m_profile[i + 2] - m_profile[i - 2]) * float(1 / (4 * step));
            for (int c = 0; c < 3; ++c)
                m_steepness[i] = std::max(m_steepness[i], std::abs(m_slopes[i][c]));
        }
        const float steepest = *std::max_element(m_steepness.begin(), m_steepness.end());
        const float least =
            std::max(float(m_bed.grain * 0.8), float(leastRelativeSlope) * steepest);
        for (size_t i = 3; i + 3 < size_t(count); ++i) {
            const float here = m_steepness[i];
            if (here < least || here < m_steepness[i - 1] || here <= m_steepness[i + 1])
                continue;
            const float before = m_steepness[i - 1];
            const float after = m_steepness[i + 1];
            const float bend = before - 2 * here + after;
            const double peak = bend < 0 ? double(0.5F * (before - after) / bend) : 0.0;
            const cv::Vec3f &slope = m_slopes[i];
            m_edges.push_back({along, m_guess.distance + m_reach - (double(i) + peak) * step,
                               slope[0] + slope[1] + slope[2] > 0});
        }
    }

    double tolerance() const { return toleranceMm * m_bed.pixelsPerMm; }

    /// The line on which most edges of one kind lie; among nearly equal ones the outermost.
    std::optional<Line> bestLine(bool isRising) const
    {
        const double bin = tolerance();
        const size_t bins = size_t(2 * m_reach / bin) + 3;
        std::optional<Line> best;
        std::vector<int> votes(bins);
        for (int i = -24; i <= 24; ++i) {
            const double tilt = mostTilt * i / 24;
            std::fill(votes.begin(), votes.end(), 0);
            for (const Edge &edge : m_edges) {
                const double offset = edge.distance - tilt * (edge.along - m_middle);
                const double at = (offset - m_guess.distance + m_reach) / bin;
                if (edge.isRising == isRising && at >= 0 && at + 1 < double(bins))
                    ++votes[size_t(at)];
            }
            for (size_t at = 0; at + 1 < bins; ++at) {
                const size_t support = size_t(votes[at] + votes[at + 1]);
                const double offset = m_guess.distance - m_reach + double(at + 1) * bin;
                if (support > 0 && (!best || support > best->support))
                    best = Line{offset, tilt, support, 0};
            }
        }
        return best;
    }

    Line chosen() const
    {
        const std::optional<Line> rising = bestLine(true);
        const std::optional<Line> falling = bestLine(false);
        if (!rising || !falling)
            return rising ? *rising : falling.value_or(Line{m_guess.distance, 0, 0, 0});
        const double enough = leastPreferredSupport * double(m_visible);
        const bool isRisingFit = double(rising->support) >= enough;
        const bool isFallingFit = double(falling->support) >= enough;
        if (isRisingFit != isFallingFit)
            return isRisingFit ? *rising : *falling;
        if (!isRisingFit)
            return rising->support >= falling->support ? *rising : *falling;
        const double inwards = falling->distance - rising->distance;
        const bool isShadow = inwards > 0 && inwards < widestShadowMm * m_bed.pixelsPerMm;
        return isShadow || inwards < 0 ? *rising : *falling;
    }

    /// The straight line through the edges near `line`, by least squares.
    Line refined(Line line) const
    {
        for (const double reach : {1.5, 1.0, 1.0}) {
            double n = 0;
            double sx = 0;
            double sy = 0;
            double sxx = 0;
            double sxy = 0;
            double last = -1e9;
            for (const Edge &edge : m_edges) {
                const double x = edge.along - m_middle;
                const double off = edge.distance - line.distance - line.tilt * x;
                if (std::abs(off) > reach * tolerance() || edge.along == last)
                    continue;
                last = edge.along;
                n += 1;
                sx += x;
                sy += edge.distance;
                sxx += x * x;
                sxy += x * edge.distance;
            }
            const double determinant = n * sxx - sx * sx;
            if (n < 3 || determinant <= 0)
                return line;
            line.tilt = (n * sxy - sx * sy) / determinant;
            line.distance = (sy - line.tilt * sx) / n;
            line.support = size_t(n);
            line.place = sx / n;
        }
        return line;
    }

    const BedView &m_bed;
    const SideGuess &m_guess;
    double m_reach;
    double m_middle;
    size_t m_visible = 0;
    size_t m_hidden = 0;
    std::vector<Edge> m_edges;
    std::vector<cv::Vec3f> m_profile;
    std::vector<cv::Vec3f> m_slopes;
    std::vector<float> m_steepness;
};

} // namespace

SideFit fitSide(const BedView &bed, const SideGuess &guess, double reachMm)
{
    return SideSearch(bed, guess, reachMm).run();
}

} // namespace scanengine
