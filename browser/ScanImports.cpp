#include "browser/ScanImports.h"

#include "model/ScanImport.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QScopeGuard>

namespace velmor {

void ScanImports::bring(const QList<QUrl> &files)
{
    if (files.isEmpty() || !m_browser || !m_browser->model())
        return;
    m_waiting.append(files);
    if (!m_isBusy)
        work();
}

void ScanImports::paste()
{
    if (const QMimeData *content = QGuiApplication::clipboard()->mimeData())
        bring(content->urls());
}

QCoro::Task<> ScanImports::work()
{
    const QPointer<ScanImports> self(this);
    const QPointer<ScansBrowser> browser(m_browser);
    const VisionOCR::Progress progress = [browser](int done, int total) {
        if (browser && done < total)
            browser->tell(tr("Importing page %1 of %2…").arg(done + 1).arg(total));
    };
    m_isBusy = true;
    const auto rest = qScopeGuard([self] {
        if (self)
            self->m_isBusy = false;
    });
    while (self && browser && browser->model() && !m_waiting.isEmpty()) {
        const QList<QUrl> files = m_waiting.takeFirst();
        const QPointer<AppModel> model(browser->model());
        browser->tell(tr("Importing…"));
        const ImportOutcome outcome = co_await importFiles(model, files, progress);
        if (browser && browser->model())
            browser->showNew(outcome.saved, outcome.message());
    }
}

} // namespace velmor
