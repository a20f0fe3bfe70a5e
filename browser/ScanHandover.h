#pragma once

#include "browser/PDFThumbnail.h"
#include "browser/ScansBrowser.h"

#include <QMimeData>
#include <QObject>
#include <QPointer>

#include <memory>

namespace velmor {

/// What other programs get for files: their addresses, with which file managers copy them.
[[nodiscard]] std::unique_ptr<QMimeData> filesToCopy(const QList<QUrl> &files);

/// Gives scans to other programs: to the desktop's viewer, to its file manager, to the clipboard,
/// and to wherever they are dragged. The scan that is pointed at stands for all marked ones if it
/// is marked itself. What fails is told in the browser's message. Main thread.
class ScanHandover : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::ScansBrowser *browser MEMBER m_browser NOTIFY browserChanged)
    Q_PROPERTY(bool isDragging READ isDragging NOTIFY draggingChanged)

public:
    using QObject::QObject;

    /// Whether scans are being dragged now, by this object.
    [[nodiscard]] bool isDragging() const { return m_isDragging; }

    /// Opens the scans with the desktop's program for them.
    Q_INVOKABLE void open(const QUrl &scan);
    /// Opens the folder in the file manager, with the scans selected where it can do that.
    Q_INVOKABLE void showInFolder(const QUrl &scan);
    /// Puts the scans on the clipboard, as files.
    Q_INVOKABLE void copy(const QUrl &scan);
    /// Drags the scans out as files to be copied, with the picture of the one under the pointer.
    /// Comes back when they are dropped, and the cell may be gone then.
    Q_INVOKABLE void drag(velmor::PDFThumbnail *cell);

Q_SIGNALS:
    void browserChanged();
    void draggingChanged();

private:
    void openFolder(const QUrl &scan);

    QPointer<ScansBrowser> m_browser;
    bool m_isDragging = false;
};

} // namespace velmor
