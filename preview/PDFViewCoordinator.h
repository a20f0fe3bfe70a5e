#pragma once

#include "preview/PDFViewBox.h"

#include <QUrl>

namespace velmor {

/// Loads documents into a view, and keeps them fitted until the user zooms. Main thread.
///
/// A change of `url` or `revision` loads the file anew, which resets zoom and scrolling; anything
/// else leaves the view alone. Changes in the same turn of the event loop load it once.
class PDFViewCoordinator : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QUrl url READ url WRITE setUrl NOTIFY changed)
    Q_PROPERTY(int revision READ revision WRITE setRevision NOTIFY changed)
    Q_PROPERTY(velmor::PDFViewBox *box READ box WRITE setBox NOTIFY changed)
    Q_PROPERTY(velmor::PDFView *view READ view WRITE setView NOTIFY changed)

public:
    using QObject::QObject;

    /// The local file to show; empty for none.
    [[nodiscard]] QUrl url() const { return m_url; }
    void setUrl(const QUrl &url);

    /// Counts the changes of the file under the same name, from 0.
    [[nodiscard]] int revision() const { return m_revision; }
    void setRevision(int revision);

    /// Told of the view; may be null. Not owned.
    [[nodiscard]] PDFViewBox *box() const { return m_box; }
    void setBox(PDFViewBox *box);

    /// Not owned.
    [[nodiscard]] PDFView *view() const { return m_view; }
    void setView(PDFView *view);

    /// Brings the view up to date with all of the above.
    void update();

    /// Scales the document to the width of the view.
    void fit();

    /// The same at the user's wish: from now on it stays fitted.
    Q_INVOKABLE void fitAgain();

    /// Whether the user has changed the scale since the file was loaded.
    [[nodiscard]] bool userZoomed() const { return m_userZoomed; }

Q_SIGNALS:
    void changed();

private:
    void scheduleUpdate();
    void documentChanged();
    void scaleChanged();
    void frameChanged();

    QUrl m_url;
    int m_revision = 0;
    QPointer<PDFViewBox> m_box;
    QPointer<PDFView> m_view;
    int m_rev = -1; ///< The revision last loaded.
    std::optional<QUrl> m_loadedURL;
    bool m_userZoomed = false;
    bool m_fitting = false; ///< The scale is being changed by `fit`, not by the user.
    bool m_updateScheduled = false;
};

} // namespace velmor
