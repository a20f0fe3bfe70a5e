#include "pipeline/outline/Sides.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

// Along each side, profiles are taken across it. Their ends tell the colours outside and inside; in
// between, each profile is a number, 0 at the outer colour and 1 at the inner one. The side is at
// the outermost strong rise: shadows are below 0, and print begins further in.

namespace velmor {

namespace {

constexpr int profilesOfSide = 96;
/// Corners may be round or torn: the part of a side at each end that isn't looked at.
constexpr double corner = 0.06;
/// Half the width of a profile along its side, in steps of `alongStep` pixels.
constexpr int alongHalf = 3;
constexpr double alongStep = 1.5;
/// The least step between outside and inside, in steps of 255.
constexpr double leastStep = 2.5;
/// Beyond 0 and 1 by more than this, a profile is cut off: shadows and print aren't edges of paper.
constexpr double beyond = 0.5;
/// The least rise a pixel that can be an edge, and what is strong beside the strongest.
constexpr double leastRise = 0.1;
constexpr double strong = 0.6;
/// How far from its line an edge may be found, in pixels, and of how many of them that is true.
constexpr double nearLine = 1.5;
constexpr double leastNear = 0.5;
/// A side that is nearer to the rim than this part of the image's longer side runs along it.
constexpr double alongRim = 0.008;

using Profile = std::vector<cv::Vec3d>;

/// A line by a point on it and its direction, of length 1.
struct Line {
    cv::Point2d at;
    cv::Point2d along;
};

double length(cv::Point2d vector)
{
    return std::hypot(vector.x, vector.y);
}

/// The colour at a place counted from the image's edge, between the pixels around it.
cv::Vec3d colourAt(const cv::Mat &image, cv::Point2d place)
{
    const double x = std::clamp(place.x - 0.5, 0.0, image.cols - 1.001);
    const double y = std::clamp(place.y - 0.5, 0.0, image.rows - 1.001);
    const int left = static_cast<int>(x);
    const int top = static_cast<int>(y);
    const double fx = x - left;
    const double fy = y - top;
    const auto *upper = image.ptr<cv::Vec3b>(top) + left;
    const auto *lower = image.ptr<cv::Vec3b>(top + 1) + left;
    return (cv::Vec3d(upper[0]) * (1 - fx) + cv::Vec3d(upper[1]) * fx) * (1 - fy) +
           (cv::Vec3d(lower[0]) * (1 - fx) + cv::Vec3d(lower[1]) * fx) * fy;
}

/// The side of a region that is looked for.
class Side {
public:
    Side(const cv::Mat &image, cv::Point2d from, cv::Point2d to, cv::Point2d inside, double reach)
        : m_image(image), m_from(from), m_to(to), m_reach(std::max(4, cvRound(reach)))
    {
        const cv::Point2d way = to - from;
        m_along = way / std::max(length(way), 1.0);
        m_inward = {-m_along.y, m_along.x};
        if (m_inward.dot(inside - from) < 0)
            m_inward = -m_inward;
    }

    [[nodiscard]] std::optional<Line> line() const
    {
        if (const std::optional<Line> rim = rimLine())
            return rim;
        std::vector<cv::Point2d> starts;
        std::vector<Profile> profiles;
        for (int i = 0; i < profilesOfSide; ++i) {
            const double part = corner + (1 - 2 * corner) * i / (profilesOfSide - 1);
            starts.push_back(m_from + (m_to - m_from) * part);
            profiles.push_back(profileAt(starts.back()));
        }
        const cv::Vec3d outer = middleColour(profiles, 0, m_reach / 2);
        const cv::Vec3d inner = middleColour(profiles, m_reach + m_reach / 2, 2 * m_reach + 1);
        if (cv::norm(inner - outer) < leastStep)
            return std::nullopt;
        std::vector<cv::Point2d> edges;
        for (size_t i = 0; i < profiles.size(); ++i) {
            if (const std::optional<double> edge = edgeOf(profiles[i], outer, inner))
                edges.push_back(starts[i] + m_inward * (*edge - m_reach));
        }
        return lineThrough(edges);
    }

    [[nodiscard]] bool isRim() const { return rimLine().has_value(); }

private:
    /// The rim that the side runs along.
    [[nodiscard]] std::optional<Line> rimLine() const
    {
        const double most = alongRim * std::max(m_image.cols, m_image.rows);
        const auto bothNear = [most](double a, double b, double rim) {
            return std::abs(a - rim) < most && std::abs(b - rim) < most;
        };
        for (const double x : {0.0, static_cast<double>(m_image.cols)}) {
            if (bothNear(m_from.x, m_to.x, x))
                return Line{
                    {x, 0},
                    {0, 1}
                };
        }
        for (const double y : {0.0, static_cast<double>(m_image.rows)}) {
            if (bothNear(m_from.y, m_to.y, y))
                return Line{
                    {0, y},
                    {1, 0}
                };
        }
        return std::nullopt;
    }

    /// The colours across the side, a pixel apart, from outside to inside, the side in the middle.
    [[nodiscard]] Profile profileAt(cv::Point2d start) const
    {
        Profile profile;
        for (int across = -m_reach; across <= m_reach; ++across) {
            cv::Vec3d sum(0, 0, 0);
            for (int step = -alongHalf; step <= alongHalf; ++step)
                sum += colourAt(m_image, start + m_inward * static_cast<double>(across) +
                                             m_along * (step * alongStep));
            profile.push_back(sum / (2 * alongHalf + 1));
        }
        return profile;
    }

    /// The median of each channel over a part of all profiles.
    static cv::Vec3d middleColour(const std::vector<Profile> &profiles, int begin, int end)
    {
        cv::Vec3d colour;
        for (int channel = 0; channel < 3; ++channel) {
            std::vector<double> values;
            for (const Profile &profile : profiles) {
                for (int i = begin; i < end; ++i)
                    values.push_back(profile[static_cast<size_t>(i)][channel]);
            }
            const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
            std::ranges::nth_element(values, middle);
            colour[channel] = *middle;
        }
        return colour;
    }

    /// Where the profile rises from the outer to the inner colour, as an index between pixels.
    static std::optional<double> edgeOf(const Profile &profile, const cv::Vec3d &outer,
                                        const cv::Vec3d &inner)
    {
        const cv::Vec3d way = inner - outer;
        std::vector<double> level;
        for (const cv::Vec3d &colour : profile)
            level.push_back(
                std::clamp((colour - outer).dot(way) / way.dot(way), -beyond, 1 + beyond));
        std::vector<double> rise(level.size(), 0);
        for (size_t i = 2; i + 2 < level.size(); ++i)
            rise[i] = (level[i + 1] + level[i + 2] - level[i - 1] - level[i - 2]) / 6;
        const double most = *std::ranges::max_element(rise);
        if (most < leastRise)
            return std::nullopt;
        for (size_t i = 2; i + 2 < rise.size(); ++i) {
            const bool isPeak = rise[i] >= rise[i - 1] && rise[i] > rise[i + 1];
            if (!isPeak || rise[i] < strong * most)
                continue;
            // The top of the parabola through the peak and its neighbours.
            const double bend = rise[i - 1] - 2 * rise[i] + rise[i + 1];
            const double shift = bend < 0 ? (rise[i - 1] - rise[i + 1]) / (2 * bend) : 0;
            return static_cast<double>(i) + shift;
        }
        return std::nullopt;
    }

    /// The line that most of the places lie near, fitted to those.
    [[nodiscard]] static std::optional<Line> lineThrough(const std::vector<cv::Point2d> &places)
    {
        std::vector<cv::Point2f> best;
        for (size_t i = 0; i < places.size(); ++i) {
            for (size_t j = i + places.size() / 4 + 1; j < places.size(); ++j) {
                const cv::Point2d along = (places[j] - places[i]) / length(places[j] - places[i]);
                std::vector<cv::Point2f> close;
                for (const cv::Point2d &place : places) {
                    if (std::abs(along.cross(place - places[i])) < nearLine)
                        close.emplace_back(place);
                }
                if (close.size() > best.size())
                    best = std::move(close);
            }
        }
        if (static_cast<double>(best.size()) < leastNear * profilesOfSide)
            return std::nullopt;
        cv::Vec4f fitted;
        cv::fitLine(best, fitted, cv::DIST_L2, 0, 0.01, 0.01);
        return Line{
            {fitted[2], fitted[3]},
            {fitted[0], fitted[1]}
        };
    }

    const cv::Mat &m_image;
    cv::Point2d m_from;
    cv::Point2d m_to;
    cv::Point2d m_along;
    cv::Point2d m_inward;
    int m_reach;
};

std::optional<cv::Point2d> crossing(const Line &a, const Line &b)
{
    const double sine = a.along.cross(b.along);
    if (std::abs(sine) < 0.1)
        return std::nullopt;
    return a.at + a.along * ((b.at - a.at).cross(b.along) / sine);
}

} // namespace

std::optional<PixelCorners> exactCorners(const cv::Mat &image, const PixelCorners &rough,
                                         double reach)
{
    const cv::Point2d middle = (rough[0] + rough[1] + rough[2] + rough[3]) / 4;
    std::vector<Line> lines;
    int rims = 0;
    for (size_t i = 0; i < rough.size(); ++i) {
        const Side side(image, rough[i], rough[(i + 1) % 4], middle, reach);
        const std::optional<Line> line = side.line();
        rims += side.isRim() ? 1 : 0;
        if (!line || rims > 2)
            return std::nullopt;
        lines.push_back(*line);
    }
    PixelCorners corners;
    for (size_t i = 0; i < corners.size(); ++i) {
        const std::optional<cv::Point2d> corner = crossing(lines[(i + 3) % 4], lines[i]);
        if (!corner)
            return std::nullopt;
        corners[i] = *corner;
    }
    return corners;
}

} // namespace velmor
