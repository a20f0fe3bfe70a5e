#include "tests/pipeline/TestPages.h"

#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

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

QByteArray readFile(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

QByteArray hugePng()
{
    return QByteArray::fromHex("89504e470d0a1a0a0000000d49484452"
                               "0000ea600000ea600800000000a5b92a9e");
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
