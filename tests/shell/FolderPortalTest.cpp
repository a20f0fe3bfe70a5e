#include "shell/FolderPortal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace velmor {
namespace {

TEST(FolderPortal, IsAServiceWithAProgramThatChoosesFiles)
{
    const char *const service = "dbus-1/services/org.freedesktop.portal.Desktop.service";
    const char *const program = "xdg-desktop-portal/portals/desk.portal";
    const struct {
        const char *what, *file, *otherFile, *interfaces;
        bool found;
    } cases[] = {
        {"both",         service, program,       "impl.portal.Print;org.freedesktop.impl.portal.FileChooser;",
         true                                                                                                       },
        {"no chooser",   service, program,       "org.freedesktop.impl.portal.Screenshot",                     false},
        {"no service",   "other", program,       "org.freedesktop.impl.portal.FileChooser",                    false},
        {"no program",   service, "other",       "org.freedesktop.impl.portal.FileChooser",                    false},
        {"another kind", service, "portals/a.b", "org.freedesktop.impl.portal.FileChooser",                    false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QTemporaryDir user, system;
        for (const QString &path : {user.filePath(QString::fromUtf8(c.file)),
                                    system.filePath(QString::fromUtf8(c.otherFile))}) {
            QDir().mkpath(QFileInfo(path).path());
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(QByteArray("[portal]\nInterfaces=") + c.interfaces + '\n');
        }
        EXPECT_EQ(hasFolderPortal({user.path(), system.path()}), c.found);
    }
}

} // namespace
} // namespace velmor
