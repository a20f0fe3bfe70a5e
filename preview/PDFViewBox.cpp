#include "preview/PDFViewBox.h"

namespace velmor {

EditorViewport PDFViewBox::currentViewport(const QUrl &url) const
{
    const PreviewDocument *const document = m_view ? m_view->document() : nullptr;
    if (!document || document->documentURL().isEmpty() || document->documentURL() != url)
        return {};
    return m_view->viewport().editorViewport();
}

} // namespace velmor
