#pragma once

#include "shell/Installation.h"

#include <QObject>
#include <QUrl>

#include <functional>

class QProcess;

namespace velmor {

/// Looks for updates when the user asks, and never by itself: hands the question over to the
/// desktop's software centre, which has windows of its own. Where there is none, it tells how this
/// copy is updated. Main thread; nothing here waits.
class UpdateChecker : public QObject {
    Q_OBJECT

public:
    /// What the desktop can do.
    struct Desktop {
        std::function<bool(const QUrl &)> hasHandler;
        std::function<bool(const QUrl &)> open; ///< False if that failed.
        QString flatpakId = {};                 ///< Empty outside of a Flatpak.
        QString appImage = {};                  ///< The path of the AppImage; empty outside of one.
        QString packageSearch = QStringLiteral("dpkg-query");
    };

    /// The desktop that the application runs on.
    [[nodiscard]] static Desktop currentDesktop();

    explicit UpdateChecker(QObject *parent = nullptr) : UpdateChecker(currentDesktop(), parent) {}
    explicit UpdateChecker(Desktop desktop, QObject *parent = nullptr);

    /// Asks the software centre, or else answers with `advised`. While that is under way another
    /// call does nothing.
    void check();

Q_SIGNALS:
    /// There is no software centre. How this copy was installed and is updated, for the user.
    void advised(const QString &advice);

private:
    void findInstallation();
    void searchFinished();

    Desktop m_desktop;
    QProcess *m_search = nullptr; ///< Of the package; while it runs.
};

} // namespace velmor
