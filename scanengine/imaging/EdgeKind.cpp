#include "scanengine/imaging/EdgeKind.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace scanengine {
namespace {

constexpr double spacingMm = 1.2;
/// Where the two sides of an edge are compared, from here to as far again.
constexpr double outsideMm = 1.6;
constexpr double insideMm = 0.8;
/// All but this share of a step's places differ by at least `clearStep` levels, or by
/// `leastStep` and about as much as the others. Between lines of text nothing differs.
constexpr double excused = 0.15;
constexpr double clearStep = 6;
constexpr double leastStep = 1.5;
constexpr double leastEvenness = 0.5;
/// The shadow of a sheet, in levels, and how much steeper it ends at the paper than on the lid.
constexpr double leastShadow = 3.5;
constexpr double leastSteepnessRatio = 1.3;
constexpr double profileReachMm = 1.6;
constexpr double profileStepMm = 0.1;
constexpr size_t profileLength = 33;

double quantile(std::vector<double> &values, double share)
{
    const auto at = values.begin() + std::ptrdiff_t(share * double(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

class Edge {
public:
    Edge(const QImage &image, const BedView &bed, const SideGuess &guess, const SideFit &fit)
        : m_pixels(pixelsOf(image)), m_bed(bed), m_guess(guess), m_fit(fit),
          m_scale(image.width() / bed.color.cols)
    {
        const double mm = bed.pixelsPerMm;
        const double corner = std::min(2 * mm, (guess.to - guess.from) / 8);
        for (double s = guess.from + corner; s <= guess.to - corner; s += spacingMm * mm) {
            if (isOnBed(point(s, 2 * outsideMm * mm)) && isOnBed(point(s, -2 * insideMm * mm)))
                m_places.push_back(s);
        }
    }

    EdgeKind kind() const
    {
        if (m_places.size() < 4)
            return EdgeKind::print;
        std::vector<double> differences;
        for (const double s : m_places)
            differences.push_back(
                cv::norm(meanColor(s, outsideMm) - meanColor(s, -insideMm), cv::NORM_INF));
        const double least = quantile(differences, excused);
        if (least >= clearStep ||
            (least >= leastStep && least >= leastEvenness * quantile(differences, 0.5)))
            return EdgeKind::step;
        return isShadow(profile()) ? EdgeKind::shadow : EdgeKind::print;
    }

private:
    using Profile = std::array<double, profileLength>;

    /// `distance` outside of the edge, both in pixels of the bed view.
    cv::Point2d point(double along, double distance) const
    {
        const double middle = (m_guess.from + m_guess.to) / 2;
        const double edge = m_fit.distance + m_fit.tilt * (along - middle);
        return m_guess.outward * (edge + distance) + m_guess.along * along;
    }

    bool isOnBed(cv::Point2d at) const
    {
        return at.x >= 0 && at.y >= 0 && at.x < m_bed.color.cols && at.y < m_bed.color.rows;
    }

    /// From `fromMm` outside of the edge to twice as far.
    cv::Vec3f meanColor(double along, double fromMm) const
    {
        cv::Vec3f sum;
        for (int i = 0; i < 5; ++i)
            sum += colorAt(m_bed, point(along, fromMm * (1 + i / 4.0) * m_bed.pixelsPerMm));
        return sum / 5;
    }

    /// Green, or grey, at a point of the bed view, at the image's own resolution.
    double level(cv::Point2d at) const
    {
        const int x = std::clamp(int(at.x * m_scale), 0, m_pixels.cols - 1);
        const int y = std::clamp(int(at.y * m_scale), 0, m_pixels.rows - 1);
        return m_pixels.channels() == 1 ? double(m_pixels.at<uchar>(y, x))
                                        : double(m_pixels.at<cv::Vec4b>(y, x)[1]);
    }

    /// The levels across the edge from outside to inside, each the median of all places.
    Profile profile() const
    {
        Profile medians{};
        std::vector<double> levels;
        for (size_t i = 0; i < profileLength; ++i) {
            const double distance =
                (profileReachMm - double(i) * profileStepMm) * m_bed.pixelsPerMm;
            levels.clear();
            // More places than for the step: the noise is that of single pixels.
            for (const double s : m_places) {
                for (const double shift : {-0.4, 0.0, 0.4})
                    levels.push_back(level(point(s + shift * m_bed.pixelsPerMm, distance)));
            }
            medians[i] = quantile(levels, 0.5);
        }
        Profile smooth = medians;
        for (size_t i = 1; i + 1 < profileLength; ++i)
            smooth[i] = (medians[i - 1] + 2 * medians[i] + medians[i + 1]) / 4;
        return smooth;
    }

    static bool isShadow(const Profile &profile)
    {
        const auto darkest = std::min_element(profile.begin() + 4, profile.end() - 4);
        const double depth = std::min(profile.front(), profile.back()) - *darkest;
        double outer = 0.1;
        double inner = 0.1;
        for (auto at = profile.begin() + 2; at != profile.end(); ++at) {
            const double rise = *at - *(at - 2);
            if (at <= darkest)
                outer = std::max(outer, -rise);
            else if (at - 2 >= darkest)
                inner = std::max(inner, rise);
        }
        return depth >= leastShadow && inner >= leastSteepnessRatio * outer;
    }

    cv::Mat m_pixels;
    const BedView &m_bed;
    const SideGuess &m_guess;
    const SideFit &m_fit;
    int m_scale;
    std::vector<double> m_places; ///< Along the side.
};

} // namespace

EdgeKind edgeKind(const QImage &image, const BedView &bed, const SideGuess &guess,
                  const SideFit &fit)
{
    return Edge(image, bed, guess, fit).kind();
}

} // namespace scanengine
