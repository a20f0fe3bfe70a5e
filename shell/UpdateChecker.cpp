#include "shell/UpdateChecker.h"

#include "shell/AppInfo.h"
#include "shell/SchemeHandler.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QProcess>

namespace velmor {

UpdateChecker::Desktop UpdateChecker::currentDesktop()
{
    Desktop desktop;
    desktop.flatpakId = qEnvironmentVariable("FLATPAK_ID");
    desktop.appImage = qEnvironmentVariable("APPIMAGE");
    // From within a Flatpak the programs of the desktop can't be seen, and the portal asks it.
    const bool sandboxed = !desktop.flatpakId.isEmpty();
    desktop.hasHandler = [sandboxed](const QUrl &address) {
        return sandboxed || hasSchemeHandler(address.scheme(), handlerFolders());
    };
    desktop.open = [](const QUrl &address) {
        return QDesktopServices::openUrl(address);
    };
    return desktop;
}

UpdateChecker::UpdateChecker(Desktop desktop, QObject *parent)
    : QObject(parent), m_desktop(std::move(desktop))
{
}

void UpdateChecker::check()
{
    const QUrl address(QStringLiteral("appstream:") + AppInfo::applicationId);
    if (m_desktop.hasHandler(address) && m_desktop.open(address))
        return;
    if (!m_desktop.flatpakId.isEmpty())
        Q_EMIT advised(updateAdvice({Installation::Kind::flatpak, m_desktop.flatpakId}));
    else if (!m_desktop.appImage.isEmpty())
        Q_EMIT advised(updateAdvice({Installation::Kind::appImage, m_desktop.appImage}));
    else if (!m_search)
        findInstallation();
}

/// Asks the packages whose the program is. Also a system without packages answers, by failing.
void UpdateChecker::findInstallation()
{
    m_search = new QProcess(this);
    connect(m_search, &QProcess::finished, this, &UpdateChecker::searchFinished);
    connect(m_search, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            searchFinished();
    });
    m_search->start(m_desktop.packageSearch,
                    {QStringLiteral("--search"), QCoreApplication::applicationFilePath()});
}

void UpdateChecker::searchFinished()
{
    const QString answer = QString::fromUtf8(m_search->readAllStandardOutput());
    m_search->deleteLater();
    m_search = nullptr;
    Q_EMIT advised(
        updateAdvice(installationFromSearch(answer, QCoreApplication::applicationFilePath())));
}

} // namespace velmor
