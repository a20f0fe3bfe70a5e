// The page editor on an A4 scan of 600 dpi in colour, as its user waits for it.

#include "bench/SamplePage.h"
#include "editor/LevelsAnalysis.h"
#include "editor/PageEditor.h"
#include "pipeline/PageRaster.h"
#include "pipeline/RawStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <memory>

using namespace velmor;

namespace {

constexpr QSize scanPixels(4960, 7016);

/// A scan that can be edited and put back as it was.
class EditedScan {
public:
    EditedScan()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
        const QImage page =
            bench::samplePage().scaled(scanPixels).convertToFormat(QImage::Format_RGB32);
        page.save(path("raw.png"), nullptr, 80);
        PdfDocument document;
        const auto jpeg = jpegImage(page, 0.85);
        const auto made =
            jpeg ? PageRaster::makePage(*jpeg, QSizeF(595.2, 841.92), {}) : std::nullopt;
        QFile file(path("original.pdf"));
        if (!made || !document.insertPage(*made, 0) || !file.open(QIODevice::WriteOnly) ||
            !document.write(file))
            qFatal("Couldn't make the scan.");
    }

    enum class Source { raw, pdf };

    void putBack(Source source) const
    {
        QFile::remove(path("scan.pdf"));
        QFile::copy(path("original.pdf"), path("scan.pdf"));
        RawStore::remove(url());
        if (source == Source::pdf)
            return;
        QFile::copy(path("raw.png"), path("page.png"));
        RawStore::adopt({path("page.png")}, url());
    }

    [[nodiscard]] QUrl url() const { return QUrl::fromLocalFile(path("scan.pdf")); }

private:
    [[nodiscard]] QString path(const char *name) const
    {
        return m_folder.filePath(QLatin1StringView(name));
    }

    QTemporaryDir m_folder;
};

const EditedScan &scan()
{
    static const EditedScan made;
    return made;
}

template <typename Condition> void waitUntil(Condition condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

std::unique_ptr<PageEditor> opened(EditorMode mode)
{
    auto editor = std::make_unique<PageEditor>();
    editor->setViewSize({900, 700});
    editor->open(scan().url(), mode);
    waitUntil([&] { return editor->hasImage() || !editor->hint().isEmpty(); });
    return editor;
}

/// From the raw page, or from the PDF.
void openPage(benchmark::State &state)
{
    scan().putBack(state.range(0) == 0 ? EditedScan::Source::raw : EditedScan::Source::pdf);
    for (auto _ : state) {
        if (!opened(EditorMode::magic)->hasImage())
            state.SkipWithError("the page didn't show");
    }
}

/// Without and with recognition, from the raw page.
void apply(benchmark::State &state, EditorMode mode)
{
    scan().putBack(EditedScan::Source::raw); // Before a model reads the settings of this user.
    AppModel model;
    ScanSettings settings = model.settings();
    settings.ocr = state.range(0) != 0;
    model.setSettings(settings);
    for (auto _ : state) {
        state.PauseTiming();
        scan().putBack(EditedScan::Source::raw);
        const std::unique_ptr<PageEditor> editor = opened(mode);
        editor->setModel(&model);
        editor->addBox();
        editor->autoSet();
        std::optional<bool> isChanged;
        QObject::connect(editor.get(), &PageEditor::done,
                         [&](bool changed) { isChanged = changed; });
        state.ResumeTiming();
        editor->apply();
        waitUntil([&] { return isChanged.has_value(); });
        if (!*isChanged)
            state.SkipWithError("nothing was applied");
    }
}

void applyCrop(benchmark::State &state)
{
    apply(state, EditorMode::crop);
}

void applyMagic(benchmark::State &state)
{
    apply(state, EditorMode::magic);
}

void autoLevelsOfPreview(benchmark::State &state)
{
    const auto sample = rgbaBuffer(bench::previewPage());
    for (auto _ : state)
        benchmark::DoNotOptimize(autoLevels(sample.value()));
}

} // namespace

BENCHMARK(autoLevelsOfPreview)->Unit(benchmark::kMillisecond);
BENCHMARK(openPage)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(applyCrop)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(applyMagic)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
