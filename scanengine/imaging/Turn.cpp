#include "scanengine/imaging/Turn.h"

#include "scanengine/imaging/PaperColor.h"
#include "scanengine/imaging/PixelView.h"

#include <opencv2/core/hal/intrin.hpp>
#include <opencv2/core/utility.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>
#include <type_traits>
#include <vector>

namespace scanengine {
namespace {

// Every row of the window is a slanted line on the image. Where that line crosses the columns of
// the image its colours are interpolated down the columns, and then along the line between them:
// two times four pixels instead of four times four.

/// Places between two pixels that are told apart, along each axis.
constexpr int phaseBits = 6;
constexpr int phases = 1 << phaseBits;
/// Weights are whole numbers with so many binary places, levels between the two steps have these.
constexpr int weightBits = 14;
constexpr int levelBits = 6;
constexpr int afterColumns = weightBits - levelBits;
constexpr int afterLine = weightBits + levelBits;

using Weights = std::array<short, 4>;

/// Keys' cubic convolution with a = -0.5, which follows a parabola exactly.
double cubic(double x)
{
    x = std::abs(x);
    if (x < 1)
        return (1.5 * x - 2.5) * x * x + 1;
    return x < 2 ? ((-0.5 * x + 2.5) * x - 4) * x + 2 : 0;
}

/// The weights of four neighbours for each place between the second and the third.
std::array<Weights, phases> makeWeights()
{
    std::array<Weights, phases> table{};
    for (int phase = 0; phase < phases; ++phase) {
        Weights &weights = table[size_t(phase)];
        int left = 1 << weightBits;
        for (int tap = 0; tap < 4; ++tap) {
            const double value = cubic(double(phase) / phases + 1 - tap);
            weights[size_t(tap)] = short(std::lround(std::ldexp(value, weightBits)));
            left -= weights[size_t(tap)];
        }
        // A plain surface keeps its level exactly.
        weights[1] = short(weights[1] + left);
    }
    return table;
}

/// A place along an axis with 32 binary places, 0 in the middle of the first pixel.
using Place = std::int64_t;

Place placeAt(double pixels)
{
    // Half a phase is added to round to the nearest one.
    return Place(std::llround(std::ldexp(pixels - 0.5 + 0.5 / phases, 32)));
}

int pixelAt(Place place)
{
    return int(place >> 32);
}

size_t phaseAt(Place place)
{
    return size_t(place >> (32 - phaseBits)) & (phases - 1);
}

/// Two of the four weights, as often as there are channels.
cv::v_int16x8 pairOf(const Weights &weights, size_t first)
{
    int pair = 0;
    std::memcpy(&pair, &weights[first], sizeof pair);
    return cv::v_reinterpret_as_s16(cv::v_setall_s32(pair));
}

/// The channels of one pixel of each row, in turn.
cv::v_int16x8 channelsOf(const uchar *upper, const uchar *lower)
{
    const auto words = [](const uchar *pixel) {
        unsigned bytes = 0;
        std::memcpy(&bytes, pixel, sizeof bytes);
        cv::v_uint16x8 low;
        cv::v_uint16x8 high;
        cv::v_expand(cv::v_reinterpret_as_u8(cv::v_setall_u32(bytes)), low, high);
        return cv::v_reinterpret_as_s16(low);
    };
    cv::v_int16x8 first;
    cv::v_int16x8 second;
    cv::v_zip(words(upper), words(lower), first, second);
    return first;
}

/// The pixel between four in a column.
void mixColumn(const std::array<const uchar *, 4> &rows, size_t x, const Weights &weights,
               short *color, std::integral_constant<int, 4>)
{
    const auto pixel = [&](size_t row) {
        return rows[row] + 4 * x;
    };
    const cv::v_int32x4 sum = cv::v_dotprod(channelsOf(pixel(0), pixel(1)), pairOf(weights, 0)) +
                              cv::v_dotprod(channelsOf(pixel(2), pixel(3)), pairOf(weights, 2));
    cv::v_rshr_pack_store<afterColumns>(color, sum);
}

void mixColumn(const std::array<const uchar *, 4> &rows, size_t x, const Weights &weights,
               short *level, std::integral_constant<int, 1>)
{
    const int sum = rows[0][x] * weights[0] + rows[1][x] * weights[1] + rows[2][x] * weights[2] +
                    rows[3][x] * weights[3];
    *level = short((sum + (1 << (afterColumns - 1))) >> afterColumns);
}

/// The pixel between four on the slanted line.
void mixLine(const short *line, const Weights &weights, uchar *pixel,
             std::integral_constant<int, 4>)
{
    cv::v_int16x8 first;
    cv::v_int16x8 second;
    cv::v_int16x8 none;
    cv::v_zip(cv::v_load_low(line), cv::v_load_low(line + 4), first, none);
    cv::v_zip(cv::v_load_low(line + 8), cv::v_load_low(line + 12), second, none);
    const cv::v_int32x4 sum =
        cv::v_dotprod(first, pairOf(weights, 0)) + cv::v_dotprod(second, pairOf(weights, 2));
    const cv::v_int16x8 levels = cv::v_rshr_pack<afterLine>(sum, sum);
    // Four bytes and no more: what comes behind may be a row of another thread.
    const unsigned bytes = cv::v_reinterpret_as_u32(cv::v_pack_u(levels, levels)).get0();
    std::memcpy(pixel, &bytes, sizeof bytes);
}

void mixLine(const short *line, const Weights &weights, uchar *pixel,
             std::integral_constant<int, 1>)
{
    const int sum =
        line[0] * weights[0] + line[1] * weights[1] + line[2] * weights[2] + line[3] * weights[3];
    *pixel = uchar(std::clamp((sum + (1 << (afterLine - 1))) >> afterLine, 0, 255));
}

/// One side of a convex area of the window: inside where x * across + y * down + offset >= 0.
struct Limit {
    double across;
    double down;
    double offset;
};

class Turning {
public:
    Turning(const QImage &image, const Window &window)
        : m_image(pixelsOf(image)), m_size(window.size),
          m_cosine(std::cos(window.angle * std::numbers::pi / 180)),
          m_sine(std::sin(window.angle * std::numbers::pi / 180))
    {
        m_origin = window.corners().first();
        const QRectF frame({0, 0}, QSizeF(image.size()));
        addLimits(QList<QPointF>{frame.topLeft(), frame.topRight(), frame.bottomRight(),
                                 frame.bottomLeft()});
    }

    void addLimits(const QPolygonF &polygon)
    {
        for (qsizetype i = 0; i < polygon.size(); ++i) {
            const QPointF start = polygon[i];
            const QPointF side = polygon[(i + 1) % polygon.size()] - start;
            // To the right of a side, going clockwise, is inside.
            const auto inside = [&](QPointF at) {
                return side.x() * (at.y() - start.y()) - side.y() * (at.x() - start.x());
            };
            const double offset = inside(source(0.5, 0.5));
            m_limits.push_back(
                {inside(source(1.5, 0.5)) - offset, inside(source(0.5, 1.5)) - offset, offset});
        }
    }

    void run(cv::Mat &result, const PaperColor &paper) const
    {
        cv::parallel_for_({0, m_size.height()}, [&](const cv::Range &range) {
            std::vector<short> line;
            for (int y = range.start; y < range.end; ++y) {
                const cv::Range shown = shownPart(y);
                fillRow(result, paper, y, shown);
                if (shown.empty())
                    continue;
                if (m_image.channels() == 1)
                    turnRow<1>(result.ptr(y), y, shown, line);
                else
                    turnRow<4>(result.ptr(y), y, shown, line);
            }
        });
    }

private:
    /// The point of the image for a point of the window.
    QPointF source(double x, double y) const
    {
        return m_origin + QPointF(x * m_cosine - y * m_sine, x * m_sine + y * m_cosine);
    }

    cv::Range shownPart(int y) const
    {
        double from = 0;
        double to = m_size.width();
        for (const Limit &limit : m_limits) {
            const double here = limit.offset + limit.down * y;
            if (limit.across > 0)
                from = std::max(from, std::ceil(-here / limit.across));
            else if (limit.across < 0)
                to = std::min(to, std::floor(-here / limit.across) + 1);
            else if (here < 0)
                to = 0;
        }
        return to > from ? cv::Range(int(from), int(to)) : cv::Range(0, 0);
    }

    void fillRow(cv::Mat &result, const PaperColor &paper, int y, cv::Range shown) const
    {
        const size_t bytes = result.elemSize();
        uchar *row = result.ptr(y);
        for (int x = 0; x < m_size.width(); ++x) {
            if (x == shown.start && !shown.empty())
                x = shown.end;
            if (x < m_size.width())
                paper.put(source(x + 0.5, y + 0.5), row + size_t(x) * bytes);
        }
    }

    /// Row `y` of the window, as far as it is `shown`. `line` is a buffer to use again.
    template <int Channels>
    void turnRow(uchar *row, int y, cv::Range shown, std::vector<short> &line) const
    {
        static const std::array<Weights, phases> weights = makeWeights();
        constexpr std::integral_constant<int, Channels> channels;
        const QPointF start = source(shown.start + 0.5, y + 0.5);
        Place across = placeAt(start.x());
        const Place step = Place(std::ldexp(m_cosine, 32));
        const int first = pixelAt(across) - 1;
        const int last = pixelAt(across + step * (shown.size() - 1)) + 2;
        line.resize(size_t(last - first + 1) * Channels);

        const double slope = m_sine / m_cosine;
        Place down = placeAt(start.y() + (first + 0.5 - start.x()) * slope);
        const Place drop = Place(std::ldexp(slope, 32));
        short *column = line.data();
        for (int x = first; x <= last; ++x, down += drop, column += Channels) {
            const int top = pixelAt(down) - 1;
            std::array<const uchar *, 4> rows;
            if (top >= 0 && top + 4 <= m_image.rows) {
                for (size_t i = 0; i < 4; ++i)
                    rows[i] = m_image.data + (size_t(top) + i) * m_image.step[0];
            } else {
                for (int i = 0; i < 4; ++i)
                    rows[size_t(i)] = m_image.ptr(std::clamp(top + i, 0, m_image.rows - 1));
            }
            mixColumn(rows, size_t(std::clamp(x, 0, m_image.cols - 1)), weights[phaseAt(down)],
                      column, channels);
        }
        for (int x = shown.start; x < shown.end; ++x, across += step)
            mixLine(line.data() + (pixelAt(across) - 1 - first) * Channels,
                    weights[phaseAt(across)], row + size_t(x) * Channels, channels);
    }

    cv::Mat m_image;
    QSize m_size;
    double m_cosine;
    double m_sine;
    QPointF m_origin;
    std::vector<Limit> m_limits;
};

} // namespace

QPolygonF Window::corners() const
{
    const double radians = angle * std::numbers::pi / 180;
    const QPointF right = QPointF(std::cos(radians), std::sin(radians)) * (size.width() / 2.0);
    const QPointF down = QPointF(-std::sin(radians), std::cos(radians)) * (size.height() / 2.0);
    return QList<QPointF>{center - right - down, center + right - down, center + right + down,
                          center - right + down};
}

QImage turnedWindow(const QImage &image, const Window &window, const QPolygonF &shown)
{
    QImage result(window.size, image.format());
    if (result.isNull())
        return result;
    result.setDotsPerMeterX(image.dotsPerMeterX());
    result.setDotsPerMeterY(image.dotsPerMeterY());
    cv::Mat pixels = writablePixelsOf(result);
    Turning turning(image, window);
    turning.addLimits(shown);
    turning.run(pixels, PaperColor(image, shown));
    return result;
}

} // namespace scanengine
