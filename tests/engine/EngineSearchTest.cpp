#include "engine/EngineSearch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace velmor {
namespace {

/// The path of `entry` below `root`. "dev" stands for the developer's folder and "APP" for the
/// program inside an app bundle.
QString pathOf(const QDir &root, QString entry)
{
    entry.replace(QStringLiteral("dev/"), QStringLiteral("home/_Coding/VELMOR/engine/"));
    entry.replace(QStringLiteral("APP"),
                  QStringLiteral("scanengine.app/Contents/MacOS/scanengine"));
    return root.filePath(entry);
}

/// Makes one entry: a folder if it ends in "/", a link to an executable file if in "@", a file that
/// may not be executed if in "!", and otherwise an executable file.
void make(const QDir &root, const QString &entry)
{
    const QChar kind = entry.back();
    const bool isExecutable = kind.isLetter();
    const QString path = pathOf(root, isExecutable ? entry : entry.chopped(1));
    ASSERT_TRUE(root.mkpath(kind == u'/' ? path : QFileInfo(path).path()));
    if (kind == u'/')
        return;
    if (kind == u'@') {
        ASSERT_TRUE(QFile::link(QStringLiteral("/bin/true"), path));
        return;
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QFile::Permissions reading = QFile::ReadOwner | QFile::WriteOwner;
    ASSERT_TRUE(file.setPermissions(isExecutable ? reading | QFile::ExeOwner : reading));
}

TEST(EngineSearch, TheFirstPlaceThatQualifiesWins)
{
    const struct {
        const char *what;
        const char *entries; ///< Separated by spaces.
        const char *found;   ///< Empty for nothing.
    } cases[] = {
        {"the chosen program before all",           "chosen lib/APP own/scanengine",                    "chosen"               },
        {"a chosen link is followed",               "chosen@ own/scanengine",                           "chosen"               },
        {"a chosen file without permission",        "chosen! own/scanengine",                           "own/scanengine"       },
        {"a chosen folder",                         "chosen/ own/scanengine",                           "own/scanengine"       },
        {"any app bundle before any plain program", "lib/scanengine own/APP",                           "own/APP"              },
        {"an app bundle must be executable",        "lib/APP! own/scanengine",                          "own/scanengine"       },
        {"a resource without permission",           "lib/scanengine! own/scanengine",                   "lib/scanengine"       },
        {"resources before the developer",          "own/scanengine dev/APP",                           "own/scanengine"       },
        {"developer: must be executable",           "dev/scanengine! dev/APP! dev/x/scanengine!",       ""                     },
        {"developer: deeper bundle first",          "dev/x/Contents/MacOS/scanengine dev/x/scanengine",
         "dev/x/Contents/MacOS/scanengine"                                                                                     },
        {"developer: a hidden folder",              "dev/.build/scanengine",                            "dev/.build/scanengine"},
        {"developer: two levels deeper",            "dev/a/b/scanengine",                               ""                     },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QTemporaryDir folder;
        const QDir root(folder.path());
        for (const QString &entry : QString::fromLatin1(c.entries).split(u' '))
            ASSERT_NO_FATAL_FAILURE(make(root, entry));
        const auto found = findEngine({
            .chosenProgram = pathOf(root, QStringLiteral("chosen")),
            .resourceFolders = {pathOf(root, QStringLiteral("lib")),
                                pathOf(root, QStringLiteral("own"))},
            .home = pathOf(root, QStringLiteral("home"))
        });
        const QString expected = QString::fromLatin1(c.found);
        EXPECT_EQ(found.value_or(QString()), expected.isEmpty() ? expected : pathOf(root, expected))
            << found.value_or(QString()).toStdString();
    }
}

TEST(EngineSearch, PlacesThatAreNotSetArePassedOver)
{
    EXPECT_EQ(findEngine({}), std::nullopt);
    EXPECT_EQ(findEngine({.resourceFolders = {QString()}}), std::nullopt);
}

} // namespace
} // namespace velmor
