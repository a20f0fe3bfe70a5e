#include "bench/GeometryQuality.h"
#include "bench/ToneQuality.h"
#include "bench/corpus/SceneSeries.h"
#include "scanengine/PngEncoder.h"
#include "scanengine/imaging/PageProcessing.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QStringList>
#include <opencv2/core/utility.hpp>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

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

/// The most memory that `work` takes beyond what is in use, in MB; in a process of its own, since a
/// peak once reached stays. Negative if none can be made.
double peakMegabytes(const std::function<void()> &work)
{
    const auto peakOf = [](const std::function<void()> &doing) {
        const pid_t child = fork();
        if (child == 0) {
            // Threads don't outlive a fork; those of the parent are missing here.
            cv::setNumThreads(1);
            doing();
            _exit(0);
        }
        int status = 0;
        rusage usage{};
        const bool isDone = child > 0 && wait4(child, &status, 0, &usage) == child &&
                            WIFEXITED(status) && WEXITSTATUS(status) == 0;
        return isDone ? double(usage.ru_maxrss) / 1024 : -1;
    };
    const double idle = peakOf([] {});
    const double most = peakOf(work);
    return idle < 0 || most < 0 ? -1 : most - idle;
}

void encode(const QImage &page)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    (void)scanengine::writePng(page, buffer);
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
            const double whole =
                leastMilliseconds(3, [&] { (void)scanengine::finishedPage(page, all, mode); });
            const double memory =
                peakMegabytes([&] { (void)scanengine::finishedPage(page, all, mode); });
            const double png = leastMilliseconds(1, [&] { encode(page); });
            std::printf("%3d dpi %-8s %12.0f %12.0f %12.0f %14.0f\n", dpi, name, turning, whole,
                        png, memory);
        }
    }
}

} // namespace

// velmor_imaging [pages [seed...]] [--only geometry|tones|costs] [--pictures folder]
// The quality of page imaging on so many beds and pages of each seed, then what it costs.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QStringList arguments = QGuiApplication::arguments().mid(1);
    const auto takeOption = [&](const QString &name) {
        const qsizetype at = arguments.indexOf(name);
        const QString value = at < 0 ? QString() : arguments.value(at + 1);
        if (at >= 0)
            arguments.remove(at, std::min<qsizetype>(2, arguments.size() - at));
        return value;
    };
    const QString pictures = takeOption(QStringLiteral("--pictures"));
    const QString only = takeOption(QStringLiteral("--only"));
    const int pages = arguments.isEmpty() ? 120 : arguments.takeFirst().toInt();
    QList<quint32> seeds;
    for (const QString &seed : arguments)
        seeds.append(seed.toUInt());
    if (seeds.isEmpty())
        seeds = {1, 2};
    if (only.isEmpty() || only == u"geometry")
        bench::printGeometryQuality(seeds, pages, pictures);
    if (only.isEmpty() || only == u"tones")
        bench::printToneQuality(seeds, pages, pictures);
    if (only.isEmpty() || only == u"costs")
        printCosts();
    return 0;
}
