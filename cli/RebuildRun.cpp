#include "cli/RebuildRun.h"

#include "cli/RecognitionCheck.h"
#include "cli/TerminalText.h"
#include "pipeline/VisionOCR.h"

#include <QFile>

namespace velmor {

RebuildRun::RebuildRun(const MagicRequest &request, QObject *parent)
    : QObject(parent), m_files(request.files), m_levels(request.levels), m_ocr(request.ocr)
{
}

RebuildRun::RebuildRun(const OcrRequest &request, QObject *parent)
    : QObject(parent), m_files(request.files)
{
}

void RebuildRun::start()
{
    rebuildAll();
}

QCoro::Task<> RebuildRun::rebuildAll()
{
    if (m_ocr) {
        const bool isThere = co_await canRecognize(m_display);
        if (!isThere) {
            Q_EMIT finished(ExitCode::notSaved);
            co_return;
        }
    }
    ExitCode code = ExitCode::success;
    for (const QUrl &file : m_files) {
        const bool isSaved = co_await rebuilt(file);
        if (isSaved) {
            m_display.closeLine();
            printLine(QFile::encodeName(file.toLocalFile()));
        } else {
            m_display.printMessage(
                QStringLiteral("%1 couldn't be rebuilt; it is as it was.").arg(file.toLocalFile()));
            code = ExitCode::notSaved;
        }
    }
    Q_EMIT finished(code);
}

QCoro::Task<bool> RebuildRun::rebuilt(QUrl file)
{
    m_display.showStatus(file.fileName());
    const std::function<bool(const PdfDocument &, const QUrl &)> write =
        [this](const PdfDocument &document, const QUrl &location) {
            return m_model.writeWithBackup(document, location);
        };
    const VisionOCR::Progress progress = [this](int done, int total) {
        m_display.showProgress(done, total);
    };
    if (!m_levels)
        co_return co_await VisionOCR::ocrDocument(file, VisionOCR::applyDpi, write, progress);
    const QList<QUrl> one(1, file);
    co_return co_await VisionOCR::applyMagic(*m_levels, one, VisionOCR::applyDpi, m_ocr, write,
                                             progress);
}

} // namespace velmor
