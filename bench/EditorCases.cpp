// What the page editor does with one page: a raw image of A4 at 600 dpi in colour, the heaviest
// that a scan leaves. Wall time: the work is spread over threads.

#include "bench/SamplePage.h"
#include "pipeline/PageOutline.h"
#include "pipeline/PageRaster.h"
#include "pipeline/RawStore.h"
#include "pipeline/VisionOCR.h"

#include <QCoroTask>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QUrl>
#include <benchmark/benchmark.h>

#include <random>

using namespace velmor;

namespace {

/// The sample letter on cream paper, with a sensor's noise, as a PNG file like the engine's.
class RawPage {
public:
    RawPage()
    {
        QImage page = bench::samplePage()
                          .scaled(4960, 7016, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                          .convertToFormat(QImage::Format_RGB32);
        std::minstd_rand random(1);
        for (int y = 0; y < page.height(); ++y) {
            auto *line = reinterpret_cast<QRgb *>(page.scanLine(y));
            for (int x = 0; x < page.width(); ++x) {
                const int value = qRed(line[x]) - static_cast<int>(random() % 4);
                line[x] = qRgb(qBound(0, value, 255), qBound(0, value - 4, 255),
                               qBound(0, value - 16, 255));
            }
        }
        QImageWriter writer(location().toLocalFile(), "png");
        writer.setCompression(20);
        if (!writer.write(page))
            qFatal("Couldn't write the raw page.");
    }

    [[nodiscard]] QUrl location() const
    {
        return QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("page.png")));
    }

private:
    QTemporaryDir m_folder{QStringLiteral("velmor_bench-XXXXXX")};
};

QUrl rawPage()
{
    static const RawPage page;
    return page.location();
}

/// Decoding alone, which all the others begin with.
void decodeRaw(benchmark::State &state)
{
    const QUrl location = rawPage();
    for (auto _ : state) {
        auto raw = RawStore::image(location);
        if (!raw)
            state.SkipWithError("the raw page couldn't be read");
        benchmark::DoNotOptimize(raw);
    }
}

/// Until the page can be shown and measured: decoded, reduced, and laid out as bytes.
void baseImage(benchmark::State &state)
{
    const QUrl location = rawPage();
    for (auto _ : state) {
        const auto raw = RawStore::image(location);
        const auto base = raw ? PageRaster::downscale(*raw, 1800) : std::nullopt;
        if (!base)
            state.SkipWithError("the raw page couldn't be read");
        else
            benchmark::DoNotOptimize(base->convertToFormat(QImage::Format_RGBA8888_Premultiplied));
    }
}

void pageOutline(benchmark::State &state)
{
    // A sheet on a lid, some degrees askew, so that all of the work is done.
    QImage scan(1272, 1800, QImage::Format_RGB32);
    scan.fill(qRgb(90, 90, 92));
    const QImage sheet = bench::previewPage().scaledToWidth(850).transformed(
        QTransform().rotate(4), Qt::SmoothTransformation);
    for (int y = 0; y < sheet.height(); ++y) {
        for (int x = 0; x < sheet.width(); ++x) {
            if (qAlpha(sheet.pixel(x, y)) > 127)
                scan.setPixel(x + 150, y + 250, sheet.pixel(x, y) | 0xFF000000);
        }
    }
    for (auto _ : state) {
        auto outline = findPageOutline(scan);
        if (!outline)
            state.SkipWithError("the sheet wasn't found");
        benchmark::DoNotOptimize(outline);
    }
}

/// One box, a little askew, over nearly all of the page; with recognition if the case says 1.
void applyCrop(benchmark::State &state)
{
    const QUrl location = rawPage();
    const Quad box{{{{.02, .01}, {.985, .02}, {.98, .985}, {.01, .98}}}};
    for (auto _ : state) {
        const auto pages = QCoro::waitFor(VisionOCR::cropPage(
            bench::samplePdfPage(), {box}, VisionOCR::applyDpi, state.range(0) != 0, location));
        if (pages.isEmpty())
            state.SkipWithError("the page wasn't cropped");
    }
}

/// New levels for the page; with recognition if the case says 1.
void applyMagic(benchmark::State &state)
{
    const QUrl location = rawPage();
    const MagicSettings levels{0.1, 0.9, 1.2};
    for (auto _ : state) {
        const auto page = QCoro::waitFor(VisionOCR::rebuildPage(
            bench::samplePdfPage(), VisionOCR::applyDpi, levels, state.range(0) != 0, location));
        if (!page)
            state.SkipWithError("the page wasn't rebuilt");
    }
}

} // namespace

BENCHMARK(decodeRaw)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(baseImage)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(pageOutline)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(applyCrop)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(applyMagic)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
