#include "cli/CropRun.h"

#include "cli/RecognitionCheck.h"
#include "cli/TerminalText.h"
#include "model/PageEdits.h"
#include "pipeline/PageSource.h"
#include "pipeline/VisionOCR.h"

#include <QFile>

namespace velmor {

CropRun::CropRun(const CropRequest &request, QObject *parent) : QObject(parent), m_request(request)
{
}

void CropRun::start()
{
    run();
}

QCoro::Task<> CropRun::run()
{
    const ExitCode code = co_await crop();
    Q_EMIT finished(code);
}

QCoro::Task<ExitCode> CropRun::crop()
{
    if (m_request.ocr) {
        const bool isThere = co_await canRecognize(m_display);
        if (!isThere)
            co_return ExitCode::notSaved;
    }
    const QUrl file = m_request.file;
    std::optional<PdfDocument> document = PdfDocument::open(file);
    if (!document) {
        m_display.printMessage(QStringLiteral("%1 couldn't be opened.").arg(file.toLocalFile()));
        co_return ExitCode::notSaved;
    }
    const std::optional<PdfPage> page = document->page(m_request.page);
    if (!page) {
        m_display.printMessage(QStringLiteral("There is no page %1; the last one is %2.")
                                   .arg(m_request.page + 1)
                                   .arg(document->pageCount()));
        co_return ExitCode::wrongUse;
    }
    m_display.showStatus(file.fileName());
    const VisionOCR::Progress progress = [this](int done, int total) {
        m_display.showProgress(done, total);
    };
    const QList<PdfPage> pages =
        co_await VisionOCR::cropPage(*page, m_request.boxes, VisionOCR::applyDpi, m_request.ocr,
                                     rawIfValid(*document, m_request.page, file), progress);
    if (pages.size() < m_request.boxes.size()) {
        m_display.printMessage(
            QStringLiteral("%1 couldn't be cropped; it is as it was.").arg(file.toLocalFile()));
        co_return ExitCode::notSaved;
    }
    const PageEdits::Outcome outcome =
        PageEdits::putCroppedPages(m_model, *document, m_request.page, pages, file);
    m_display.printMessage(outcome.message);
    if (!outcome.isWritten)
        co_return ExitCode::notSaved;
    printLine(QFile::encodeName(file.toLocalFile()));
    co_return ExitCode::success;
}

} // namespace velmor
