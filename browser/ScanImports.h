#pragma once

#include "browser/ScansBrowser.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

namespace velmor {

/// Brings files that are dropped or pasted into the browser's folder, as `importFiles` does.
///
/// One import after the other: what comes while one runs waits. The browser's message tells how far
/// it is and what came of it, and the new scans are marked. Main thread.
class ScanImports : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::ScansBrowser *browser MEMBER m_browser NOTIFY browserChanged)

public:
    using QObject::QObject;

    Q_INVOKABLE void bring(const QList<QUrl> &files);
    /// Brings the files on the clipboard, if there are any.
    Q_INVOKABLE void paste();

Q_SIGNALS:
    void browserChanged();

private:
    QCoro::Task<> work();

    QPointer<ScansBrowser> m_browser;
    QList<QList<QUrl>> m_waiting;
    bool m_isBusy = false;
};

} // namespace velmor
