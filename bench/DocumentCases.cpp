// Work on PDF pages and whole documents. Wall time: rendering happens on a thread of its own.

#include "bench/SamplePage.h"
#include "model/AppModel.h"
#include "pipeline/PageRaster.h"
#include "preview/PictureRequest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QUrl>
#include <benchmark/benchmark.h>

#include <vector>

using namespace velmor;

namespace {

/// A folder with a scan of so many pages, each with a JPEG of its own.
class ScanFolder {
public:
    explicit ScanFolder(int pages)
    {
        PdfDocument document;
        for (int index = 0; index < pages; ++index) {
            const auto page = distinctPage(index);
            if (!page || !document.insertPage(*page, index))
                return;
        }
        QFile file(scan());
        m_made = m_folder.isValid() && file.open(QIODevice::WriteOnly) && document.write(file);
    }

    [[nodiscard]] bool isMade() const { return m_made; }
    [[nodiscard]] QString scan() const { return m_folder.filePath(QStringLiteral("scan.pdf")); }
    [[nodiscard]] QString copy() const { return m_folder.filePath(QStringLiteral("copy.pdf")); }

private:
    /// The sample with one dot more, so that no two pages share their picture.
    static std::optional<PdfPage> distinctPage(int index)
    {
        QImage picture = bench::samplePage();
        picture.scanLine(40 + 8 * (index / 200))[40 + 8 * (index % 200)] = 0;
        const auto image = jpegImage(picture, 0.85);
        return image ? PageRaster::makePage(*image, QSizeF(595.2, 841.92), {}) : std::nullopt;
    }

    QTemporaryDir m_folder{QDir::tempPath() + QStringLiteral("/velmor_bench-XXXXXX")};
    bool m_made = false;
};

bool copyScan(const ScanFolder &folder)
{
    QFile source(folder.scan());
    QSaveFile target(folder.copy());
    if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly))
        return false;
    const QByteArray content = source.readAll();
    return target.write(content) == content.size() && target.commit();
}

bool turnScan(const ScanFolder &folder)
{
    const auto document = PdfDocument::open(QUrl::fromLocalFile(folder.scan()));
    for (int index = 0; document && index < document->pageCount(); ++index) {
        auto page = document->page(index);
        if (!page)
            return false;
        page->setRotation(90);
    }
    QSaveFile target(folder.copy());
    return document && target.open(QIODevice::WriteOnly) && document->write(target) &&
           target.commit();
}

/// Joins the scan with itself, as merging does, and writes a new file.
bool mergeScan(const ScanFolder &folder)
{
    PdfDocument merged;
    for (int copy = 0; copy < 2; ++copy) {
        const auto document = PdfDocument::open(QUrl::fromLocalFile(folder.scan()));
        if (!document || merged.appendPages(*document, 0, document->pageCount()) == 0)
            return false;
    }
    QSaveFile target(folder.copy());
    return target.open(QIODevice::WriteOnly) && merged.write(target) && target.commit();
}

/// Times `work`, which answers whether it could be done, on a scan of as many pages as the case
/// says, made beforehand.
void workOnScan(benchmark::State &state, bool (*work)(const ScanFolder &))
{
    const ScanFolder folder(static_cast<int>(state.range(0)));
    if (!folder.isMade())
        state.SkipWithError("the scan couldn't be made");
    for (auto _ : state) {
        if (!work(folder))
            state.SkipWithError("the scan couldn't be read or written");
    }
}

/// Replaces a file as a whole with the scan's content, as every save does.
void copyPages(benchmark::State &state)
{
    workOnScan(state, copyScan);
}

/// Opens the scan, turns each page and replaces a file with the result.
void rotatePages(benchmark::State &state)
{
    workOnScan(state, turnScan);
}

/// Opens two scans and writes a file with the pages of both.
void mergePages(benchmark::State &state)
{
    workOnScan(state, mergeScan);
}

/// Lists a folder of so many scans, which are one under many names.
void listScans(benchmark::State &state)
{
    const ScanFolder folder(1);
    const QDir names(QFileInfo(folder.scan()).path());
    for (int64_t number = 1; number < state.range(0); ++number)
        QFile::link(folder.scan(), names.filePath(QStringLiteral("%1.pdf").arg(number)));
    AppModel model;
    ScanSettings settings = model.settings();
    settings.outputFolder = QUrl::fromLocalFile(names.path());
    model.setSettings(settings);
    for (auto _ : state) {
        model.loadResults();
        if (model.results().size() != state.range(0))
            state.SkipWithError("the folder wasn't listed whole");
    }
}

/// At the size that the browser asks for: 440 pixels across, which is 622 down.
void thumbnail(benchmark::State &state)
{
    for (auto _ : state) {
        auto picture = PageRaster::render(bench::samplePdfPage(), PageRaster::MaxDim{622});
        if (!picture)
            state.SkipWithError("the thumbnail wasn't rendered");
        benchmark::DoNotOptimize(picture);
    }
}

/// All that a preview of 700 by 800 pixels draws of a page, at so many times the fitted scale.
void previewPage(benchmark::State &state)
{
    const PdfPage &page = bench::samplePdfPage();
    const PageSheet sheet{page.cropBox(), page.rotation()};
    DocumentViewport viewport;
    viewport.setViewSize({700, 800});
    viewport.setPages({sheet});
    viewport.setScale(viewport.fitScale() * static_cast<double>(state.range(0)), {350, 400});
    for (auto _ : state) {
        for (const PictureRequest &request : neededPictures(viewport, 1)) {
            const QRectF part = sheet.toPageSpace().mapRect(request.area(sheet.size()));
            auto picture = PageRaster::render(page, part, request.pixels.size());
            if (!picture)
                state.SkipWithError("the page wasn't rendered");
            benchmark::DoNotOptimize(picture);
        }
    }
}

void makePage(benchmark::State &state)
{
    const auto image = jpegImage(bench::samplePage(), 0.85);
    if (!image) {
        state.SkipWithError("jpegImage gave nothing");
        return;
    }
    std::vector<OcrLine> lines;
    for (int number = 0; number < 45; ++number)
        lines.push_back({QStringLiteral("a line of about sixty letters as a page of a letter has"),
                         QRectF(0.1, 0.02 * number + 0.05, 0.8, 0.015)});
    for (auto _ : state) {
        auto page = PageRaster::makePage(*image, QSizeF(595.2, 841.92), lines);
        if (!page)
            state.SkipWithError("makePage gave nothing");
        benchmark::DoNotOptimize(page);
    }
}

} // namespace

BENCHMARK(makePage)->Unit(benchmark::kMillisecond);
BENCHMARK(thumbnail)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(previewPage)->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyPages)->Arg(1)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(listScans)->Arg(5000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(mergePages)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(rotatePages)->Arg(1)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();
