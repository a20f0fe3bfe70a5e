// Pixel work on one page, beside the bare copying of the same bytes.

#include "bench/SamplePage.h"
#include "pipeline/PageRaster.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

using namespace velmor;

namespace {

void copyBytes(benchmark::State &state, const QImage &image)
{
    const auto size = static_cast<std::size_t>(image.sizeInBytes());
    std::vector<char> target(size);
    for (auto _ : state) {
        std::memcpy(target.data(), image.constBits(), size);
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}

void applyLevels(benchmark::State &state, const QImage &image)
{
    for (auto _ : state) {
        auto result = PageRaster::applyLevels(image, 0.1, 0.9, 1.2);
        if (!result)
            state.SkipWithError("applyLevels gave nothing");
        benchmark::DoNotOptimize(result);
    }
}

void copyPreview(benchmark::State &state)
{
    copyBytes(state, bench::previewPage());
}

void levelsPreview(benchmark::State &state)
{
    applyLevels(state, bench::previewPage());
}

/// A colour page has four times the bytes of a grey one.
void levelsColourPreview(benchmark::State &state)
{
    applyLevels(state, bench::previewPage().convertToFormat(QImage::Format_RGB32));
}

void copyA4(benchmark::State &state)
{
    copyBytes(state, bench::samplePage());
}

void levelsA4(benchmark::State &state)
{
    applyLevels(state, bench::samplePage());
}

void jpegA4(benchmark::State &state)
{
    for (auto _ : state) {
        auto result = jpegImage(bench::samplePage(), 0.85);
        if (!result)
            state.SkipWithError("jpegImage gave nothing");
        benchmark::DoNotOptimize(result);
    }
}

} // namespace

BENCHMARK(copyPreview)->Unit(benchmark::kMillisecond);
BENCHMARK(levelsPreview)->Unit(benchmark::kMillisecond);
BENCHMARK(levelsColourPreview)->Unit(benchmark::kMillisecond);
BENCHMARK(copyA4)->Unit(benchmark::kMillisecond);
BENCHMARK(levelsA4)->Unit(benchmark::kMillisecond);
BENCHMARK(jpegA4)->Unit(benchmark::kMillisecond);
