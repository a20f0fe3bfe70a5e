#include "controls/DesktopMotion.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace velmor;

namespace {

TEST(DesktopMotion, ReadsTheWishFromSettingsFiles)
{
    struct Case {
        const char *what;
        const char *file;
        const char *text;
        std::optional<bool> reduced;
    };
    const Case cases[] = {
        {"no file",              "other",                "",                                          {}   },
        {"nothing said",         "gtk-4.0/settings.ini", "[Settings]\ngtk-font-name=Inter 11\n",      {}   },
        {"GTK 4, off by number", "gtk-4.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n",
         true                                                                                              },
        {"GTK 3, off by word",   "gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=false\n",
         true                                                                                              },
        {"GTK 3, on",            "gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=true\n",  false},
        {"Plasma, instantly",    "kdeglobals",           "[KDE]\nAnimationDurationFactor=0\n",        true },
        {"Plasma, slower",       "kdeglobals",           "[KDE]\nAnimationDurationFactor=1.5\n",      false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        QTemporaryDir folder;
        const QDir config(folder.path());
        const QString path = config.filePath(QLatin1String(c.file));
        ASSERT_TRUE(config.mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(c.text);
        file.close();
        EXPECT_EQ(reducedMotionInFiles(config), c.reduced);
    }
}

} // namespace
