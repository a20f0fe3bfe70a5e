#include "shell/FolderPortal.h"

#include "controls/SessionBus.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>

namespace velmor {

namespace {

/// Qt's setting of whose dialogs are shown.
constexpr auto platformTheme = "QT_QPA_PLATFORMTHEME";

bool hasService(const QDir &data)
{
    return data.exists(QStringLiteral("dbus-1/services/org.freedesktop.portal.Desktop.service"));
}

bool hasChooser(QDir portals)
{
    if (!portals.cd(QStringLiteral("xdg-desktop-portal/portals")))
        return false;
    const QStringList descriptions = portals.entryList({QStringLiteral("*.portal")}, QDir::Files);
    return std::ranges::any_of(descriptions, [&](const QString &name) {
        QFile file(portals.filePath(name));
        return file.open(QIODevice::ReadOnly) &&
               file.readAll().contains("org.freedesktop.impl.portal.FileChooser");
    });
}

} // namespace

bool hasFolderPortal(const QStringList &dataFolders)
{
    return std::ranges::any_of(dataFolders, hasService) &&
           std::ranges::any_of(dataFolders, hasChooser);
}

FolderPortalChoice::FolderPortalChoice()
{
    if (qEnvironmentVariableIsSet(platformTheme) || !hasSessionBus() ||
        !hasFolderPortal(QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)))
        return;
    m_made = qputenv(platformTheme, "xdgdesktopportal");
}

FolderPortalChoice::~FolderPortalChoice()
{
    if (m_made)
        qunsetenv(platformTheme);
}

} // namespace velmor
