#include "tests/pipeline/TestPages.h"

#include <QFile>
#include <QProcess>
#include <QtEndian>
#include <gtest/gtest.h>

#include <array>
#include <random>

namespace velmor {

QImage noise(QSize size, quint32 seed)
{
    QImage image(size, QImage::Format_Grayscale8);
    std::minstd_rand random(seed);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.scanLine(y)[x] = static_cast<uchar>(random() % 256);
    }
    return image;
}

PdfPage plainPage(QSizeF size, int grey)
{
    QImage image(8, 8, QImage::Format_Grayscale8);
    image.fill(QColor(grey, grey, grey));
    return PageRaster::makePage(losslessImage(image).value(), size, {}).value();
}

PdfDocument documentOf(const QList<int> &heights)
{
    PdfDocument document;
    for (const int height : heights)
        EXPECT_TRUE(document.insertPage(plainPage(QSizeF(100, height)), document.pageCount()));
    return document;
}

QList<int> heightsOf(const PdfDocument &document)
{
    QList<int> heights;
    for (int index = 0; index < document.pageCount(); ++index)
        heights.append(qRound(document.page(index)->mediaBox().height()));
    return heights;
}

QString writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    return path;
}

QByteArray emptyPng(QSize size)
{
    const auto bigEndian = [](quint32 number) {
        std::array<char, 4> bytes{};
        qToBigEndian(number, bytes.data());
        return QByteArray(bytes.data(), bytes.size());
    };
    const auto crc = [](const QByteArray &bytes) {
        quint32 sum = 0xffffffff;
        for (const char byte : bytes) {
            sum ^= static_cast<uchar>(byte);
            for (int bit = 0; bit < 8; ++bit)
                sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xedb88320 : 0);
        }
        return ~sum;
    };
    const QByteArray header = QByteArray("IHDR") + bigEndian(static_cast<quint32>(size.width())) +
                              bigEndian(static_cast<quint32>(size.height())) +
                              QByteArray("\x08\x00\x00\x00\x00", 5);
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + bigEndian(13) + header + bigEndian(crc(header));
}

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60'000)) << qPrintable(program);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

} // namespace velmor
