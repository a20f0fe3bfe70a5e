#include "scanengine/drivers/sane/FrameAssembly.h"

#include "scanengine/imaging/PixelLimit.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace scanengine {
namespace {

constexpr double metresPerInch = 0.0254;
/// No line of a page within `maxPixels` has more than this, padding included.
constexpr int maxLineBytes = 64 * 1024 * 1024;
/// How an image of unknown height grows, in lines: by half, but not by less.
constexpr int leastGrowth = 512;

/// Also what SANE's net backend makes of a connection that broke between two pages.
Fault badFrame()
{
    return {QStringLiteral("The scanner sent a page that can't be read. Check its cable or "
                           "network, switch it off and on, and scan again.")};
}

Fault pageTooLarge()
{
    return {QStringLiteral("The page is too large to scan at this resolution. Choose a lower one "
                           "and scan again.")};
}

Fault outOfMemory()
{
    return {QStringLiteral("The page needs more memory than there is. Choose a lower resolution "
                           "and scan again.")};
}

int channelsOf(FrameFormat format)
{
    return format == FrameFormat::rgb ? 3 : 1;
}

/// Bytes of a line's samples, without padding.
qint64 sampleBytes(const FrameParameters &frame)
{
    constexpr int bitsPerByte = 8;
    const qint64 bytesPerChannel = (qint64(frame.pixelsPerLine) * frame.depth + 7) / bitsPerByte;
    return bytesPerChannel * channelsOf(frame.format);
}

bool isOneColor(FrameFormat format)
{
    return format != FrameFormat::gray && format != FrameFormat::rgb;
}

uchar from16Bits(const uchar *sample)
{
    quint16 value = 0;
    std::memcpy(&value, sample, sizeof value);
    constexpr unsigned half = 0xffff / 2;
    return uchar((value * 0xffU + half) / 0xffffU);
}

/// Writes one line of a page. `light(x, channel)` is how much of the light a pixel shows, 0 to 255;
/// a pass of one colour adds to what the passes before it left.
template <typename Light> void writePixels(FrameFormat format, int width, uchar *line, Light light)
{
    auto *pixels = reinterpret_cast<QRgb *>(line);
    switch (format) {
    case FrameFormat::gray:
        for (int x = 0; x < width; ++x)
            line[x] = light(x, 0);
        break;
    case FrameFormat::rgb:
        for (int x = 0; x < width; ++x)
            pixels[x] = qRgb(light(x, 0), light(x, 1), light(x, 2));
        break;
    case FrameFormat::red:
        for (int x = 0; x < width; ++x)
            pixels[x] |= qRgb(light(x, 0), 0, 0);
        break;
    case FrameFormat::green:
        for (int x = 0; x < width; ++x)
            pixels[x] |= qRgb(0, light(x, 0), 0);
        break;
    case FrameFormat::blue:
        for (int x = 0; x < width; ++x)
            pixels[x] |= qRgb(0, 0, light(x, 0));
        break;
    }
}

} // namespace

FrameAssembly::FrameAssembly(double xDpi, double yDpi) : m_xDpi(xDpi), m_yDpi(yDpi) {}

std::optional<Fault> FrameAssembly::begin(const FrameParameters &parameters)
{
    const bool isDepthKnown =
        parameters.depth == 1 || parameters.depth == 8 || parameters.depth == 16;
    if (!isDepthKnown || parameters.pixelsPerLine <= 0 ||
        parameters.bytesPerLine < sampleBytes(parameters) || parameters.bytesPerLine > maxLineBytes)
        return badFrame();
    const bool isFirst = m_image.isNull();
    const bool goesOn = isOneColor(parameters.format) && isOneColor(m_frame.format) &&
                        parameters.pixelsPerLine == m_image.width();
    if (m_isComplete || (!isFirst && !goesOn))
        return badFrame();
    m_frame = parameters;
    m_partial.clear();
    m_line = 0;
    if (!isFirst)
        return std::nullopt;
    const QSize size(parameters.pixelsPerLine, parameters.lines > 0 ? parameters.lines : 1);
    if (!isWithinPixelLimit(size))
        return pageTooLarge();
    const bool isGray = parameters.format == FrameFormat::gray;
    m_image = QImage(size, isGray ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
    if (m_image.isNull())
        return outOfMemory();
    if (isOneColor(parameters.format))
        m_image.fill(Qt::black);
    return std::nullopt;
}

std::optional<Fault> FrameAssembly::append(QByteArrayView data)
{
    const qsizetype lineBytes = m_frame.bytesPerLine;
    while (!data.isEmpty()) {
        const bool isWhole = m_partial.isEmpty() && data.size() >= lineBytes;
        const qsizetype taken =
            isWhole ? lineBytes : std::min(lineBytes - m_partial.size(), data.size());
        const QByteArrayView piece = data.first(taken);
        data = data.sliced(taken);
        if (!isWhole)
            m_partial.append(piece);
        if (!isWhole && m_partial.size() < lineBytes)
            continue;
        if (const auto fault = makeRoom())
            return fault;
        if (m_line == m_image.height())
            return std::nullopt;
        writeLine(reinterpret_cast<const uchar *>(isWhole ? piece.data() : m_partial.constData()));
        m_partial.resize(0); // Keeps its memory for the next line.
        ++m_line;
    }
    return std::nullopt;
}

std::optional<Fault> FrameAssembly::end()
{
    if (m_line == 0)
        return Fault{QStringLiteral("The scanner sent an empty page. Put the paper in anew and "
                                    "scan again.")};
    m_height = m_height < 0 ? m_line : std::min(m_height, m_line);
    m_partial.clear();
    constexpr int colors = 3;
    if (isOneColor(m_frame.format) && ++m_colorsRead < colors)
        return m_frame.isLast ? std::optional(badFrame()) : std::nullopt;
    m_isComplete = true;
    return std::nullopt;
}

QImage FrameAssembly::take()
{
    QImage page = std::exchange(m_image, QImage());
    if (page.height() > m_height)
        page = page.copy(0, 0, page.width(), m_height);
    page.setDotsPerMeterX(int(std::lround(m_xDpi / metresPerInch)));
    page.setDotsPerMeterY(int(std::lround(m_yDpi / metresPerInch)));
    return page;
}

/// Makes a line more for a frame of unknown height, if that is needed.
std::optional<Fault> FrameAssembly::makeRoom()
{
    const int height = m_image.height();
    const bool mayGrow = m_frame.lines <= 0 && m_height < 0;
    if (m_line < height || !mayGrow)
        return std::nullopt;
    const qint64 tallest = maxPixels / m_image.width();
    if (height >= tallest)
        return pageTooLarge();
    const qint64 wanted = height + std::max<qint64>(height / 2, leastGrowth);
    QImage taller = m_image.copy(0, 0, m_image.width(), int(std::min(wanted, tallest)));
    if (taller.isNull())
        return outOfMemory();
    m_image = std::move(taller);
    return std::nullopt;
}

void FrameAssembly::writeLine(const uchar *line)
{
    const int channels = channelsOf(m_frame.format);
    const int width = m_image.width();
    uchar *pixels = m_image.scanLine(m_line);
    switch (m_frame.depth) {
    case 1: {
        // Eight pixels of one channel share a byte, the first in the highest bit. A set bit is
        // black in a line of grey, and light in one of colours.
        const int setBit = m_frame.format == FrameFormat::gray ? 0x00 : 0xff;
        writePixels(m_frame.format, width, pixels, [=](int x, int channel) {
            const uchar byte = line[qsizetype(x / 8) * channels + channel];
            return uchar((byte >> (7 - x % 8)) & 1 ? setBit : 0xff - setBit);
        });
        break;
    }
    case 16:
        writePixels(m_frame.format, width, pixels, [=](int x, int channel) {
            return from16Bits(line + 2 * (qsizetype(x) * channels + channel));
        });
        break;
    default:
        writePixels(m_frame.format, width, pixels,
                    [=](int x, int channel) { return line[qsizetype(x) * channels + channel]; });
    }
}

} // namespace scanengine
