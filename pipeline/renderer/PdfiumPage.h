#pragma once

#include "pipeline/renderer/RendererMessages.h"

#include <QBuffer>
#include <QImage>
#include <QPdfDocument>

namespace velmor {

/// The first page of a PDF file, open in PDFium. One thread.
class PdfiumPage {
public:
    /// Opens the file, which may be anything. Its bytes are shared.
    explicit PdfiumPage(const QByteArray &pdf);

    /// Whether there is a page.
    [[nodiscard]] bool isOpen() const;

    /// The page as shown on white, `Format_RGB32`. Null if it can't be drawn.
    [[nodiscard]] QImage picture(QSize size);

    [[nodiscard]] PageTextAnswer text(const PageTextRequest &request);
    [[nodiscard]] TextPositionAnswer textPosition(const TextPositionRequest &request);

private:
    [[nodiscard]] double pageTop() const;

    QBuffer m_file;
    QPdfDocument m_document;
};

} // namespace velmor
