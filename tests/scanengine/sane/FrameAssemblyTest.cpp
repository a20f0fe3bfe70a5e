#include "scanengine/drivers/sane/FrameAssembly.h"

#include "scanengine/imaging/PixelLimit.h"

#include <QByteArray>
#include <gmock/gmock.h>

#include <vector>

namespace scanengine {
namespace {

using testing::ElementsAre;

constexpr auto gray = FrameFormat::gray;
constexpr auto rgb = FrameFormat::rgb;

FrameParameters frameOf(FrameFormat format, int pixels, int lines, int depth, int bytesPerLine)
{
    return {format, true, bytesPerLine, pixels, lines, depth};
}

/// A frame from its beginning to its end, the data in pieces of `pieceSize` bytes.
bool isTaken(FrameAssembly &page, const FrameParameters &frame, const QByteArray &data,
             qsizetype pieceSize = 5)
{
    if (page.begin(frame))
        return false;
    for (qsizetype at = 0; at < data.size(); at += pieceSize) {
        if (page.append(data.mid(at, pieceSize)))
            return false;
    }
    return !page.end();
}

/// The pixels of an image as RRGGBB, row by row.
QStringList pixels(const QImage &image)
{
    QStringList all;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            all.append(QColor(image.pixel(x, y)).name().mid(1));
    }
    return all;
}

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ');
}

QByteArray bytes(const char *digits)
{
    return QByteArray::fromHex(digits);
}

/// Samples of 16 bits, in this computer's order of bytes.
QByteArray wide(const std::vector<quint16> &samples)
{
    return {reinterpret_cast<const char *>(samples.data()), qsizetype(2 * samples.size())};
}

TEST(FrameAssembly, EveryKindOfDataGivesItsPixels)
{
    const char *fourGreys = "000000 808080 ffffff 010101";
    const char *nineOfGrey = "ffffff 000000 000000 000000 000000 000000 000000 000000 ffffff";
    const QByteArray twoWideLines =
        wide({0x1000, 0x2000, 0xff00, 0x5555, 0xff00, 0x0000, 0x8000, 0x5555});
    const struct {
        const char *what;
        FrameParameters frame;
        QByteArray data;
        const char *pixels;
    } cases[] = {
        {"grey",             frameOf(gray, 2, 2, 8,  2), bytes("0080 ff01"),     fourGreys      },
        {"grey, padded",     frameOf(gray, 2, 2, 8,  3), bytes("0080ee ff01ee"), fourGreys      },
        {"set bit is black", frameOf(gray, 9, 1, 1,  2), bytes("7f00"),          nineOfGrey     },
        {"grey of 16 bits",  frameOf(gray, 2, 1, 16, 4), wide({0x7fff, 0xffff}), "7f7f7f ffffff"},
        {"colour",           frameOf(rgb,  2, 1, 8,  6), bytes("102030 a0b0c0"), "102030 a0b0c0"},
        {"colour, padded",   frameOf(rgb,  1, 2, 16, 8), twoWideLines,           "1020fe fe0080"},
        {"set bit is light", frameOf(rgb,  2, 1, 1,  3), bytes("80 40 c0"),      "ff00ff 00ffff"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        for (const qsizetype pieceSize : {1, 4, 1000}) {
            FrameAssembly page(300, 150);
            ASSERT_TRUE(isTaken(page, c.frame, c.data, pieceSize));
            EXPECT_TRUE(page.isComplete());
            const QImage image = page.take();
            EXPECT_EQ(image.format(),
                      c.frame.format == gray ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
            EXPECT_EQ(pixels(image), words(c.pixels));
            EXPECT_EQ(image.dotsPerMeterX(), 11811);
            EXPECT_EQ(image.dotsPerMeterY(), 5906);
        }
    }
}

TEST(FrameAssembly, ThreePassesInAnyOrderMakeOneColourPage)
{
    const struct {
        FrameFormat format;
        const char *data;
        bool isLast;
    } passes[] = {
        {FrameFormat::green, "2021 2223 2425", false},
        {FrameFormat::blue,  "3031 3233 34",   false}, // Ends in mid-line.
        {FrameFormat::red,   "1011 1213 1415", true },
    };
    FrameAssembly page(300, 300);
    for (const auto &pass : passes) {
        EXPECT_FALSE(page.isComplete());
        FrameParameters frame = frameOf(pass.format, 2, 3, 8, 2);
        frame.isLast = pass.isLast;
        ASSERT_TRUE(isTaken(page, frame, bytes(pass.data)));
    }
    EXPECT_TRUE(page.isComplete());
    EXPECT_EQ(pixels(page.take()), words("102030 112131 122232 132333"));
}

TEST(FrameAssembly, WhatComesCountsNotWhatWasAnnounced)
{
    const struct {
        const char *what;
        int lines;
        int linesSent;
        int expected;
    } cases[] = {
        {"ends short",             5,  3,    3   },
        {"runs long",              2,  3,    2   },
        {"unknown height",         -1, 1700, 1700},
        {"unknown height as zero", 0,  2,    2   },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        FrameAssembly page(300, 300);
        QByteArray data(3 * c.linesSent, '\x55');
        data.front() = '\x11';
        data[data.size() - 1] = '\x99';
        data += "x"; // The beginning of a line that never ends.
        ASSERT_TRUE(isTaken(page, frameOf(gray, 3, c.lines, 8, 3), data, 1000));
        EXPECT_EQ(page.linesRead(), c.expected);
        const QImage image = page.take();
        EXPECT_EQ(image.size(), QSize(3, c.expected));
        EXPECT_EQ(qGray(image.pixel(0, 0)), 0x11);
        if (c.expected == c.linesSent) {
            EXPECT_EQ(qGray(image.pixel(2, c.expected - 1)), 0x99);
        }
    }
}

TEST(FrameAssembly, RefusesWhatCantBeAPage)
{
    const FrameParameters cases[] = {
        frameOf(gray, 10, 5, 4, 10),              // A depth nobody has.
        frameOf(gray, 10, 5, 8, 9),               // Fewer bytes than samples.
        frameOf(rgb, 10, 5, 16, 59),              //
        frameOf(gray, 9, 5, 1, 1),                //
        frameOf(gray, 0, 5, 8, 10),               //
        frameOf(gray, -5, 5, 8, 10),              //
        frameOf(gray, 60'000, 60'000, 8, 60'000), // Beyond the pixel limit.
        frameOf(rgb, 1'000'000'000, 1, 8, 1'000), // Overflows 32 bits.
        frameOf(gray, 1, 1, 8, 2'000'000'000),    // A line that fills memory.
    };
    for (const FrameParameters &frame : cases) {
        FrameAssembly page(300, 300);
        EXPECT_TRUE(page.begin(frame)) << frame.pixelsPerLine << " pixels, " << frame.depth;
    }
    FrameAssembly empty(300, 300);
    EXPECT_FALSE(isTaken(empty, frameOf(gray, 4, 5, 8, 4), "abc")) << "not one whole line";
    FrameAssembly mixed(300, 300);
    FrameParameters red = frameOf(FrameFormat::red, 1, 1, 8, 1);
    red.isLast = false;
    ASSERT_TRUE(isTaken(mixed, red, "a"));
    EXPECT_TRUE(mixed.begin(frameOf(gray, 1, 1, 8, 1))) << "grey after red";
    EXPECT_TRUE(mixed.begin(frameOf(FrameFormat::blue, 2, 1, 8, 2))) << "another width";
    red.isLast = true;
    EXPECT_FALSE(isTaken(mixed, red, "a")) << "the last colour of two";
}

TEST(FrameAssembly, AnEndlessPageStopsAtTheLimit)
{
    constexpr int width = 3'000'000;
    FrameAssembly page(300, 300);
    ASSERT_FALSE(page.begin(frameOf(gray, width, -1, 1, width / 8)));
    const QByteArray line(width / 8, '\0');
    qint64 lines = 0;
    while (!page.append(line) && lines * width <= 2 * maxPixels)
        ++lines;
    EXPECT_EQ(lines, maxPixels / width);
}

} // namespace
} // namespace scanengine
