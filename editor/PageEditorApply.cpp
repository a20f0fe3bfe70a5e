#include "editor/EditedFile.h"
#include "editor/PageEditor.h"
#include "model/PageEdits.h"
#include "pipeline/PageSource.h"
#include "pipeline/VisionOCR.h"

namespace velmor {

bool PageEditor::canApply() const
{
    return !m_busy && (isCrop() ? !boxes().isEmpty() : magicTouched());
}

void PageEditor::applyCrop()
{
    if (!boxes().isEmpty() && begin())
        crop(*m_page, boxes(), rawIfValid(m_file->document, m_pageIndex, m_url));
}

void PageEditor::applyMagic()
{
    if (!magicTouched() || !begin())
        return;
    m_model->setMagicPreset(m_levels.settings());
    level(*m_page, m_levels.settings(), rawIfValid(m_file->document, m_pageIndex, m_url));
}

/// Whether an apply can start; it is under way then. The page's being there means that no task of
/// the loader is at the document, and none is begun until the apply is over.
bool PageEditor::begin()
{
    if (m_busy || m_isDone || !m_model || !m_page)
        return false;
    m_applyWish = std::make_shared<const int>();
    setBusy(true);
    return true;
}

QCoro::Task<> PageEditor::crop(PdfPage page, QList<Quad> boxes, std::optional<QUrl> raw)
{
    const QPointer<PageEditor> self = this;
    const bool ocr = m_model->settings().ocr;
    const int index = m_pageIndex;
    const auto isWanted = [wish = std::weak_ptr(m_applyWish)] {
        return !wish.expired();
    };
    const QList<PdfPage> pages =
        co_await VisionOCR::cropPage(page, boxes, applyDpi, ocr, raw, {}, isWanted);
    if (!self || m_isDone)
        co_return;
    conclude([&] {
        return PageEdits::putCroppedPages(*m_model, m_file->document, index, pages, m_url);
    });
}

QCoro::Task<> PageEditor::level(PdfPage page, MagicSettings levels, std::optional<QUrl> raw)
{
    const QPointer<PageEditor> self = this;
    const bool ocr = m_model->settings().ocr;
    const int index = m_pageIndex;
    const std::optional<PdfPage> made =
        co_await VisionOCR::rebuildPage(page, applyDpi, levels, ocr, raw);
    if (!self || m_isDone)
        co_return;
    conclude([&] {
        return made ? PageEdits::putLevelledPage(*m_model, m_file->document, index, *made, m_url)
                    : PageEdits::Outcome();
    });
}

/// Has the new pages put into the file, unless that is another one by now, and ends the pass.
template <typename Put> void PageEditor::conclude(Put put)
{
    setBusy(false);
    if (!m_model) {
        finish(false);
        return;
    }
    const std::optional<QString> obstacle = strangeChange();
    const PageEdits::Outcome outcome =
        obstacle ? PageEdits::Outcome{.isWritten = false, .message = *obstacle} : put();
    if (!outcome.message.isEmpty())
        m_model->flash(outcome.message);
    finish(outcome.isWritten);
}

/// What somebody else has done to the file since it was read.
std::optional<QString> PageEditor::strangeChange() const
{
    const FileStamp now = stampOf(m_url);
    if (now == m_file->stamp)
        return std::nullopt;
    return now == FileStamp() ? tr("Not applied — the file isn't there any more")
                              : tr("Not applied — the file has been changed meanwhile");
}

void PageEditor::setBusy(bool busy)
{
    m_busy = busy;
    Q_EMIT busyChanged();
}

void PageEditor::finish(bool changed)
{
    if (m_isDone)
        return;
    m_isDone = true;
    m_wish.reset();
    m_applyWish.reset();
    Q_EMIT done(changed);
}

} // namespace velmor
