#include "scanengine/imaging/Skew.h"

#include "scanengine/imaging/PixelView.h"

#include <opencv2/core/hal/intrin.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <utility>
#include <vector>

namespace scanengine {
namespace {

constexpr double searchDpi = 100;
constexpr double steepestAngle = 15;
/// The search for the exact angle may look past the steepest one.
constexpr double steepestSearched = 17;
constexpr double radiansPerDegree = std::numbers::pi / 180;
/// The sides of the paper are no lines of the text.
constexpr double marginMm = 2.5;
/// Ink is darker than the lightest nearby by this many levels, or by this many times the
/// mean difference of all pixels, but never needs to be by more than the last.
constexpr double leastInk = 16;
constexpr double inkOverNoise = 2.5;
constexpr double mostInkNeeded = 60;
/// How far away paper is looked for around ink.
constexpr double widestStrokeMm = 5;
/// Letters are at most this large; what is larger must be as sparse as a table's rules.
constexpr double largestLetterMm = 14;
constexpr double densestRules = 0.25;
/// The search adds up columns in strips this wide, in pixels.
constexpr int stripWidth = 4;
/// Lines are evidence if they gather their edges so many times better than other angles do, and
/// so much better than any other angle far away.
constexpr double leastGain = 2.2;
constexpr double leastLead = 1.25;
constexpr double rivalDistance = 1.2;
/// Steps of the search, in degrees: on the page at half its size, and for the usual sharpness.
constexpr double coarseStep = 0.3;
constexpr double usualStep = 1.5;
/// From here on lines tell the angle better than the paper's edges do.
constexpr double clearGain = 30;
/// Fewer letters are no text but part of a drawing.
constexpr int leastLetters = 10;
/// Lines of letters need at least so many edges, counted by their weight: a line has two. Rules
/// alone are evidence if there are many, as in a table; a few are a drawing's.
constexpr double leastLetterEdges = 1.7;
constexpr double leastRuleEdges = 5;
constexpr double leastRuleGain = 8;
constexpr double leastLetterShare = 0.3;
/// Edges nearer to each other count as one.
constexpr double edgeWidthMm = 1.2;
constexpr double blockWidthMm = 65;

/// Where lines are, at an angle: the sums along lines of that angle of how much lighter or darker
/// the page gets from one line to the next.
///
/// Summed in blocks side by side: over the whole width lines gather best, but those in neighbouring
/// columns needn't be level with each other, which only narrow blocks forgive.
class LineSums {
public:
    /// `change` is CV_32FC1, lines run along its rows.
    LineSums(const cv::Mat &change, double pixelsPerMm)
        : m_count(std::max(1, change.cols / stripWidth)),
          m_margin(int(change.cols * std::tan(steepestSearched * radiansPerDegree) / 2) + 4),
          m_edgeWidth(std::max(1, int(std::lround(edgeWidthMm * pixelsPerMm))))
    {
        cv::Mat strips = cv::Mat::zeros(m_count, change.rows, CV_32FC1);
        for (int y = 0; y < change.rows; ++y) {
            const auto *row = change.ptr<float>(y);
            for (int strip = 0; strip < m_count; ++strip) {
                float sum = 0;
                for (int i = 0; i < stripWidth && strip * stripWidth + i < change.cols; ++i)
                    sum += row[strip * stripWidth + i];
                strips.at<float>(strip, y) = sum;
            }
        }
        for (int phase = 0; phase < phases; ++phase) {
            cv::Mat kernel(1, 7, CV_32FC1);
            for (int tap = 0; tap < 7; ++tap) {
                const double off = tap - 3 + double(phase) / phases;
                kernel.at<float>(tap) = float(std::exp(-off * off / 2));
            }
            cv::filter2D(strips, m_shifted[size_t(phase)], CV_32F, kernel, {-1, -1}, 0,
                         cv::BORDER_REPLICATE);
        }
    }

    /// How sharply the lines stand out at `degrees`.
    double sharpness(double degrees, int blocks = 1)
    {
        add(degrees, blocks);
        return m_sums.dot(m_sums);
    }

    /// How many edges of lines there are at `degrees`, weighted by how much they stand out.
    double edges(double degrees)
    {
        add(degrees, 1);
        double sum = 0;
        double squares = 0;
        for (int x = 0; x + m_edgeWidth <= m_sums.cols; x += m_edgeWidth) {
            const cv::Mat part = m_sums.colRange(x, x + m_edgeWidth);
            const double edge = part.dot(part);
            sum += edge;
            squares += edge * edge;
        }
        return squares > 0 ? sum * sum / squares : 0;
    }

private:
    void add(double degrees, int blocks)
    {
        const double slope = std::tan(degrees * radiansPerDegree);
        m_sums.create(blocks, m_shifted[0].cols + 2 * m_margin, CV_32FC1);
        m_sums = 0;
        for (int strip = 0; strip < m_count; ++strip) {
            const double shift = m_margin - (strip - m_count / 2.0) * stripWidth * slope;
            const int place = int(std::lround(shift * phases));
            const cv::Mat &shifted = m_shifted[size_t(place % phases)];
            addTo(m_sums.ptr<float>(strip * blocks / m_count) + place / phases,
                  shifted.ptr<float>(strip), shifted.cols);
        }
    }

    static void addTo(float *to, const float *from, int count)
    {
        int i = 0;
        for (; i + 4 <= count; i += 4)
            cv::v_store(to + i, cv::v_load(to + i) + cv::v_load(from + i));
        for (; i < count; ++i)
            to[i] += from[i];
    }

    static constexpr int phases = 8;
    int m_count;
    /// The strips moved by parts of a pixel, all equally soft: none of the angles is favoured. One
    /// row for each strip, one column for each row of the page.
    std::array<cv::Mat, phases> m_shifted;
    int m_margin; ///< Room for lines that leave the page.
    int m_edgeWidth;
    cv::Mat m_sums; ///< One row for each block.
};

/// What changes along one axis of the page, split by what it belongs to. CV_32FC1.
struct Changes {
    cv::Mat letters;
    cv::Mat rules;
    int letterCount = 0;
    double pixelsPerMm = 1;
};

struct Evidence {
    double angle = 0; ///< Degrees clockwise for lines along rows.
    double gain = 0;  ///< 0 if there is none.
};

struct Peak {
    double angle = 0;
    double sharpness = -1;
};

/// The sharpest of the angles around `middle`.
Peak sharpestOf(LineSums &lines, double middle, double reach, double step, int blocks = 1)
{
    Peak best;
    const int steps = int(std::lround(reach / step));
    for (int i = -steps; i <= steps; ++i) {
        const double angle = middle + i * step;
        const double sharpness = lines.sharpness(angle, blocks);
        if (sharpness > best.sharpness)
            best = {angle, sharpness};
    }
    return best;
}

/// The sharpest angle near `coarse`, to a fraction of the last step.
Peak sharpestNear(LineSums &lines, double coarse, double reach, int blocks = 1)
{
    constexpr double step = 0.04;
    const Peak near = sharpestOf(lines, coarse, reach, 0.1, blocks);
    const Peak best = sharpestOf(lines, near.angle, 2 * step, step, blocks);
    const double before = lines.sharpness(best.angle - step, blocks);
    const double after = lines.sharpness(best.angle + step, blocks);
    const double bend = before - 2 * best.sharpness + after;
    const double peak = bend < 0 ? 0.5 * (before - after) / bend : 0;
    return {best.angle + std::clamp(peak, -1.0, 1.0) * step, best.sharpness};
}

/// The sharpest angles of a page made half as large, the second well apart from the first. Nothing
/// if the first is at the end of the range: it is the side of one beyond.
std::optional<std::pair<double, double>> coarseAngles(const cv::Mat &change, double pixelsPerMm)
{
    cv::Mat half;
    cv::resize(change, half, {}, 0.5, 0.5, cv::INTER_AREA);
    LineSums lines(half, pixelsPerMm / 2);
    const int reach = int(std::lround(steepestAngle / coarseStep));
    std::vector<double> scores;
    for (int i = -reach; i <= reach; ++i)
        scores.push_back(lines.sharpness(i * coarseStep));
    const auto top = std::max_element(scores.begin(), scores.end()) - scores.begin();
    if (scores[size_t(top)] <= 0 || top == 0 || top + 1 == std::ptrdiff_t(scores.size()))
        return std::nullopt;
    std::ptrdiff_t rival = top;
    for (std::ptrdiff_t i = 0; i < std::ptrdiff_t(scores.size()); ++i) {
        const bool isApart = double(std::abs(i - top)) * coarseStep > rivalDistance;
        if (isApart && (rival == top || scores[size_t(i)] > scores[size_t(rival)]))
            rival = i;
    }
    return std::pair(double(top - reach) * coarseStep, double(rival - reach) * coarseStep);
}

/// What sharpness an angle has that no line follows.
double usualSharpness(LineSums &lines)
{
    std::vector<double> scores;
    for (double angle = -steepestAngle; angle <= steepestAngle; angle += usualStep)
        scores.push_back(lines.sharpness(angle));
    const auto median = scores.begin() + std::ptrdiff_t(scores.size() / 2);
    std::nth_element(scores.begin(), median, scores.end());
    return *median;
}

bool areEnough(LineSums &lines, const Changes &changes, double angle, double sharpness, double gain)
{
    LineSums letters(changes.letters, changes.pixelsPerMm);
    if (changes.letterCount >= leastLetters &&
        letters.sharpness(angle) >= leastLetterShare * sharpness)
        return letters.edges(angle) >= leastLetterEdges;
    return gain >= leastRuleGain && lines.edges(angle) >= leastRuleEdges;
}

/// The angle of the lines along the rows.
Evidence lineAngle(const Changes &changes)
{
    const cv::Mat change = changes.letters + changes.rules;
    const auto coarse = coarseAngles(change, changes.pixelsPerMm);
    if (!coarse)
        return {};
    LineSums lines(change, changes.pixelsPerMm);
    const Peak peak = sharpestNear(lines, coarse->first, coarseStep);
    const double rival = sharpestOf(lines, coarse->second, coarseStep, 0.1).sharpness;
    const double usual = usualSharpness(lines);
    const double gain = usual > 0 ? peak.sharpness / usual : 0;
    if (gain < leastGain || peak.sharpness < leastLead * rival ||
        !areEnough(lines, changes, peak.angle, peak.sharpness, gain))
        return {};
    const int blocks =
        std::max(1, int(std::lround(change.cols / (blockWidthMm * changes.pixelsPerMm))));
    return {sharpestNear(lines, peak.angle, 0.5, blocks).angle, gain};
}

/// 255 within `paper` less a margin; everywhere less a margin if it is empty.
cv::Mat searchedArea(cv::Size size, const QPolygonF &paper, const ReducedImage &small)
{
    cv::Mat area(size, CV_8UC1, cv::Scalar(paper.isEmpty() ? 255 : 0));
    if (!paper.isEmpty()) {
        std::vector<cv::Point> points;
        for (const QPointF corner : paper)
            points.emplace_back(int(std::lround(corner.x() / small.factor)),
                                int(std::lround(corner.y() / small.factor)));
        cv::fillConvexPoly(area, points, 255);
    }
    const int margin = int(std::lround(marginMm * small.pixelsPerMm));
    cv::erode(area, area,
              cv::getStructuringElement(cv::MORPH_RECT, {2 * margin + 1, 2 * margin + 1}), {-1, -1},
              1, cv::BORDER_CONSTANT, 0);
    return area;
}

/// 255 on ink, and around it where its edges are.
struct Ink {
    cv::Mat letters;
    cv::Mat rules;
    int letterCount = 0;
};

enum class Kind : uchar { none, letter, rule };

Kind kindOf(const int *stats, double pixelsPerMm)
{
    const double width = stats[cv::CC_STAT_WIDTH];
    const double height = stats[cv::CC_STAT_HEIGHT];
    const double area = stats[cv::CC_STAT_AREA];
    if (area <= 2)
        return Kind::none;
    if (std::max(width, height) <= largestLetterMm * pixelsPerMm)
        return Kind::letter;
    const bool isThin = std::min(width, height) < 1.2 * pixelsPerMm;
    return isThin || area < densestRules * width * height ? Kind::rule : Kind::none;
}

Ink inkOf(const cv::Mat &grey, const cv::Mat &area, double pixelsPerMm)
{
    const int stroke = int(std::lround(widestStrokeMm * pixelsPerMm)) | 1;
    cv::Mat ink;
    cv::morphologyEx(grey, ink, cv::MORPH_BLACKHAT,
                     cv::getStructuringElement(cv::MORPH_RECT, {stroke, stroke}));
    const double noise = cv::mean(ink, area)[0];
    ink = ink > std::clamp(inkOverNoise * noise, leastInk, mostInkNeeded);
    ink &= area;

    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centers;
    const int count = cv::connectedComponentsWithStats(ink, labels, stats, centers, 8, CV_32S);
    std::vector<Kind> kinds(size_t(count), Kind::none);
    for (int label = 1; label < count; ++label)
        kinds[size_t(label)] = kindOf(stats.ptr<int>(label), pixelsPerMm);
    Ink result{cv::Mat(ink.size(), CV_8UC1), cv::Mat(ink.size(), CV_8UC1),
               int(std::count(kinds.begin(), kinds.end(), Kind::letter))};
    for (int y = 0; y < ink.rows; ++y) {
        const int *label = labels.ptr<int>(y);
        uchar *letters = result.letters.ptr(y);
        uchar *rules = result.rules.ptr(y);
        for (int x = 0; x < ink.cols; ++x) {
            letters[x] = kinds[size_t(label[x])] == Kind::letter ? 255 : 0;
            rules[x] = kinds[size_t(label[x])] == Kind::rule ? 255 : 0;
        }
    }
    for (cv::Mat &mask : {std::ref(result.letters), std::ref(result.rules)})
        cv::dilate(mask, mask, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    return result;
}

} // namespace

std::optional<TextSkew> textSkew(const QImage &image, const QPolygonF &paper)
{
    const ReducedImage small = reduced(image, searchDpi);
    if (small.pixels.empty())
        return std::nullopt;
    cv::Mat grey = small.pixels;
    if (grey.channels() == 4)
        cv::cvtColor(grey, grey, cv::COLOR_BGRA2GRAY);
    cv::GaussianBlur(grey, grey, {5, 5}, 0.8);
    const cv::Mat area = searchedArea(grey.size(), paper, small);
    const Ink ink = inkOf(grey, area, small.pixelsPerMm);
    std::array<Evidence, 2> found;
    for (size_t i = 0; i < found.size(); ++i) {
        cv::Mat change;
        cv::Sobel(grey, change, CV_32F, i == 0 ? 0 : 1, i == 0 ? 1 : 0, 3, 0.125, 0,
                  cv::BORDER_REPLICATE);
        Changes changes{cv::Mat::zeros(grey.size(), CV_32FC1),
                        cv::Mat::zeros(grey.size(), CV_32FC1), ink.letterCount, small.pixelsPerMm};
        change.copyTo(changes.letters, ink.letters);
        change.copyTo(changes.rules, ink.rules & ~ink.letters);
        if (i == 1) {
            changes.letters = changes.letters.t();
            changes.rules = changes.rules.t();
        }
        found[i] = lineAngle(changes);
    }
    // Seen along columns a clockwise turn goes the other way.
    found[1].angle = -found[1].angle;
    const Evidence &best = found[0].gain >= found[1].gain ? found[0] : found[1];
    if (best.gain == 0)
        return std::nullopt;
    return TextSkew{best.angle, best.gain >= clearGain};
}

} // namespace scanengine
