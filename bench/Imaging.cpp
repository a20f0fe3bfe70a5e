#include "bench/GeometryQuality.h"
#include "bench/ToneQuality.h"
#include "bench/corpus/SceneSeries.h"
#include "scanengine/imaging/PageProcessing.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

double leastMilliseconds(int runs, const std::function<void()> &work)
{
    double least = 1e9;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        least = std::min(least, double(timer.nsecsElapsed()) / 1e6);
    }
    return least;
}

/// The most memory of this process so far, in MB.
double peakMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

/// Sets the peak back to what is in use.
void forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

void encode(const QImage &page)
{
    QBuffer buffer;
    page.save(&buffer, "PNG");
}

/// An A4 page on a black lid, turned by 2 degrees.
QImage scannedPage(int dpi, QImage::Format format)
{
    corpus::Random random(5);
    const QSizeF a4(210, 297);
    corpus::Bed bed;
    bed.size = {216, 305};
    bed.dpi = dpi;
    bed.lid = qRgb(25, 25, 25);
    bed.noise = 2;
    return corpus::renderBed(bed,
                             {
                                 {corpus::makeSheet(corpus::SheetContent::text, a4, dpi,
                                  qRgb(246, 245, 240), random),
                                  a4, {108, 152.5},
                                  1}
    },
                             5)
        .image.convertToFormat(format);
}

void printCosts()
{
    std::printf("\n%-16s %12s %12s %12s %14s\n", "A4 page", "geometry ms", "all ms", "PNG ms",
                "all, memory MB");
    for (const int dpi : {300, 600}) {
        for (const auto &[name, format, mode] : {
                 std::tuple{"grey",   QImage::Format_Grayscale8, scanengine::ColorMode::gray },
                 {"colour", QImage::Format_RGB32,      scanengine::ColorMode::color}
        }) {
            const QImage page = scannedPage(dpi, format);
            scanengine::AutoSwitches geometry;
            geometry.crop = geometry.deskew = true;
            scanengine::AutoSwitches all = geometry;
            all.cleanBackground = all.autoLevels = all.blankRemoval = true;
            const double turning =
                leastMilliseconds(3, [&] { (void)scanengine::finishedPage(page, geometry, mode); });
            forgetPeak();
            const double before = peakMegabytes();
            const double whole =
                leastMilliseconds(3, [&] { (void)scanengine::finishedPage(page, all, mode); });
            const double memory = peakMegabytes() - before;
            const double png = leastMilliseconds(1, [&] { encode(page); });
            std::printf("%3d dpi %-8s %12.0f %12.0f %12.0f %14.0f\n", dpi, name, turning, whole,
                        png, memory);
        }
    }
}

} // namespace

// velmor_imaging [scenes [seed... [--pictures folder]]]
// Quality of page imaging for each seed, then what it costs.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QStringList arguments = QGuiApplication::arguments().mid(1);
    QString pictures;
    const qsizetype option = arguments.indexOf(QStringLiteral("--pictures"));
    if (option >= 0) {
        pictures = arguments.value(option + 1);
        arguments = arguments.mid(0, option);
    }
    const int scenes = arguments.isEmpty() ? 240 : arguments.takeFirst().toInt();
    if (arguments.isEmpty())
        arguments = {QStringLiteral("1"), QStringLiteral("2")};
    for (const QString &seed : arguments)
        bench::printGeometryQuality(seed.toULongLong(), scenes, pictures);
    for (const QString &seed : arguments)
        bench::printToneQuality(seed.toUInt(), scenes, pictures);
    printCosts();
    return 0;
}
