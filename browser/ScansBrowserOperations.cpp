#include "browser/ScansBrowser.h"
#include "model/ScanFiles.h"
#include "pipeline/RawStore.h"
#include "pipeline/VisionOCR.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace velmor {

namespace {

/// Resolution at which a page without a raw image is drawn.
constexpr double magicDpi = 300;

} // namespace

void ScansBrowser::rotate()
{
    if (!m_model)
        return;
    const QList<QUrl> files = targets();
    const ScanFiles::Outcome outcome = ScanFiles::rotate(*m_model, files);
    raise(files);
    bump(outcome.message);
}

void ScansBrowser::merge()
{
    if (!m_model)
        return;
    if (m_selection.size() < 2) {
        setNote(ScanFiles::tooFewToMerge());
        return;
    }
    const ScanFiles::Outcome outcome = ScanFiles::merge(*m_model, m_selection);
    if (outcome.isWritten)
        showOnly(outcome.saved);
    bump(outcome.message);
}

void ScansBrowser::split()
{
    if (!m_model)
        return;
    const ScanFiles::Outcome outcome = ScanFiles::split(*m_model, targets());
    if (outcome.isWritten && !outcome.saved.isEmpty())
        showOnly(outcome.saved);
    bump(outcome.message);
}

void ScansBrowser::deleteSelected()
{
    if (!m_model)
        return;
    for (const QUrl &file : targets()) {
        QFile::remove(file.toLocalFile());
        RawStore::remove(file);
    }
    setSelection({});
    bump(tr("Deleted"));
}

void ScansBrowser::undoEdit()
{
    if (!canUndo())
        return;
    const QUrl file = *previewURL();
    const bool isRestored = m_model->undoEdit(file);
    if (isRestored)
        raise({file});
    bump(isRestored ? tr("Undid last edit") : tr("Nothing to undo"));
}

QString ScansBrowser::rename(const QUrl &url, const QString &name)
{
    if (!m_model || m_editorMode)
        return {};
    const ScanFiles::Renaming renaming = ScanFiles::rename(*m_model, url, name);
    if (renaming.file == url)
        return renaming.problem;
    QList<QUrl> selection = m_selection;
    std::ranges::replace(selection, url, renaming.file);
    setSelection(selection);
    if (m_hovered == url)
        setHovered(renaming.file);
    raise({renaming.file});
    bump(tr("Renamed"));
    return {};
}

void ScansBrowser::showNew(const QList<QUrl> &files, const QString &message)
{
    if (!files.isEmpty() && !m_editorMode)
        showOnly(files);
    bump(message);
}

void ScansBrowser::applyMagicPreset()
{
    if (!hasMagicPreset())
        return;
    const QList<QUrl> files = targets();
    if (files.isEmpty()) {
        setNote(tr("Select scans first"));
        return;
    }
    const auto count = static_cast<int>(files.size());
    setNote(count == 1 ? tr("Applying magic to 1 scan…")
                       : tr("Applying magic to %n scans…", nullptr, count));
    repeatMagic(*m_model->magicPreset(), files);
}

QCoro::Task<> ScansBrowser::repeatMagic(MagicSettings levels, QList<QUrl> files)
{
    const QPointer<ScansBrowser> self = this;
    const QPointer<AppModel> model = m_model;
    const bool ocr = m_model->settings().ocr;
    bool isDone = true;
    for (const QUrl &file : std::as_const(files)) {
        // Noted before the file is read. What was edited, replaced or deleted meanwhile stays so.
        const FileStamp stamp = stampOf(file);
        const std::function<bool(const PdfDocument &, const QUrl &)> write =
            [model, stamp](const PdfDocument &document, const QUrl &url) {
                return model && stampOf(url) == stamp && model->writeWithBackup(document, url);
            };
        const QList<QUrl> one(1, file);
        const bool isWritten = co_await VisionOCR::applyMagic(levels, one, magicDpi, ocr, write);
        isDone = isWritten && isDone;
    }
    if (!self)
        co_return;
    raise(files);
    const auto count = static_cast<int>(files.size());
    if (!isDone)
        bump(tr("Some scans couldn't be written"));
    else
        bump(count == 1 ? tr("Magic applied to 1 scan")
                        : tr("Magic applied to %n scans", nullptr, count));
}

} // namespace velmor
