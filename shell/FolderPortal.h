#pragma once

#include <QStringList>

namespace velmor {

/// Whether the desktop has a portal that shows a dialog to choose a folder: the service that
/// applications ask and a program that does it for the service, by the descriptions of both in
/// `dataFolders`. The service itself, which starts when it is first asked, isn't.
[[nodiscard]] bool hasFolderPortal(const QStringList &dataFolders);

/// While it lives, an application object that is made takes its dialogs from the portal, where the
/// desktop has one and the user wants no other. Programs that are started later don't notice.
class FolderPortalChoice {
public:
    FolderPortalChoice();
    ~FolderPortalChoice();
    Q_DISABLE_COPY_MOVE(FolderPortalChoice)

private:
    bool m_made = false;
};

} // namespace velmor
