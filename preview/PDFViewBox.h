#pragma once

#include "model/EditorViewport.h"
#include "preview/PDFView.h"

#include <QPointer>

namespace velmor {

/// Lets operations outside the preview ask it where it stands. Main thread.
class PDFViewBox : public QObject {
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;

    /// The live view, not owned; null if there is none.
    [[nodiscard]] PDFView *view() const { return m_view; }
    void setView(PDFView *view) { m_view = view; }

    /// What the view shows of the document at `url`. The default if it shows none, another one, or
    /// one without pages.
    [[nodiscard]] EditorViewport currentViewport(const QUrl &url) const;

private:
    QPointer<PDFView> m_view;
};

} // namespace velmor
