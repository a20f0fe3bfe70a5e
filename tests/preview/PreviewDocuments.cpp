#include "tests/preview/PreviewDocuments.h"

#include "tests/pipeline/TestPages.h"

namespace velmor {

PdfDocument documentWith(const QList<QStringList> &pages)
{
    PdfDocument document;
    QImage grey(8, 8, QImage::Format_Grayscale8);
    grey.fill(QColor(128, 128, 128));
    for (const QStringList &texts : pages) {
        QList<OcrLine> lines;
        for (const QString &text : texts)
            lines.append({
                text, {0.1, 0.85 - 0.1 * static_cast<double>(lines.size()), 0.8, 0.05}
            });
        const auto page = PageRaster::makePage(losslessImage(grey).value(), {200, 300}, lines);
        static_cast<void>(document.insertPage(page.value(), document.pageCount()));
    }
    return document;
}

std::shared_ptr<PreviewDocument> previewOf(const QList<QStringList> &pages)
{
    return std::make_shared<PreviewDocument>(documentWith(pages), QUrl());
}

} // namespace velmor
