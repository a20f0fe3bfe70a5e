#include "shell/UpdateChecker.h"

#include "shell/SchemeHandler.h"
#include "tests/Waiting.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::HasSubstr;

void writeText(const QString &path, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

/// A desktop that does what a case says, and takes down what it is asked.
struct FakeDesktop {
    bool hasHandler = false;
    bool opens = true;
    QList<QUrl> opened = {};
    QTemporaryDir folder = {};

    UpdateChecker::Desktop desktop()
    {
        UpdateChecker::Desktop made;
        made.hasHandler = [this](const QUrl &) {
            return hasHandler;
        };
        made.open = [this](const QUrl &address) {
            opened.append(address);
            return opens;
        };
        made.packageSearch = QStringLiteral("/nonexistent/dpkg-query");
        return made;
    }

    /// A search for packages that answers so, for the path it is asked for.
    QString packageSearch(const QByteArray &answer)
    {
        const QString path = folder.filePath(QStringLiteral("search"));
        writeText(path, "#!/bin/sh\necho \"" + answer + ": $2\"\n");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }
};

QString adviceOf(UpdateChecker &checker)
{
    QString advice;
    QObject::connect(&checker, &UpdateChecker::advised,
                     [&](const QString &text) { advice = text; });
    checker.check();
    EXPECT_TRUE(waitUntil([&] { return !advice.isEmpty(); }));
    return advice;
}

TEST(UpdateChecker, TheSoftwareCentreIsAskedForTheApplicationOnce)
{
    FakeDesktop fake{.hasHandler = true};
    UpdateChecker checker(fake.desktop());
    QObject::connect(&checker, &UpdateChecker::advised,
                     [](const QString &advice) { ADD_FAILURE() << advice.toStdString(); });
    EXPECT_TRUE(fake.opened.isEmpty());
    checker.check();
    EXPECT_EQ(fake.opened, QList<QUrl>{QUrl(QStringLiteral("appstream:org.velmor.Velmor"))});
}

TEST(UpdateChecker, WithoutASoftwareCentreTheUserLearnsHowThisCopyIsUpdated)
{
    const QString program = QCoreApplication::applicationFilePath();
    const struct {
        const char *what;
        bool hasHandler;
        const char *flatpakId, *appImage, *package;
        std::string advice;
    } cases[] = {
        {"flatpak",             false, "org.velmor.Velmor", "",              nullptr,        "flatpak update org.velmor.Velmor"},
        {"AppImage",            false, "",                  "/a/V.AppImage", nullptr,        "/a/V.AppImage"                   },
        {"package",             false, "",                  "",              "velmor",       "install --only-upgrade velmor"   },
        {"package of one kind", false, "",                  "",              "velmor:amd64", "install --only-upgrade velmor"   },
        {"no package",          false, "",                  "",              nullptr,        program.toStdString()             },
        {"centre won't open",   true,  "",                  "",              "velmor",       "install --only-upgrade velmor"   },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        FakeDesktop fake{.hasHandler = c.hasHandler, .opens = false};
        UpdateChecker::Desktop desktop = fake.desktop();
        desktop.flatpakId = QString::fromUtf8(c.flatpakId);
        desktop.appImage = QString::fromUtf8(c.appImage);
        if (c.package)
            desktop.packageSearch = fake.packageSearch(c.package);
        UpdateChecker checker(desktop);
        EXPECT_THAT(adviceOf(checker).toStdString(), HasSubstr(c.advice));
    }
}

TEST(Installation, APackageIsReadFromTheAnswerAlone)
{
    const struct {
        const char *answer;
        const char *package; ///< Null if there is none.
    } cases[] = {
        {"velmor: /usr/bin/velmor\n",                                       "velmor"},
        {"velmor:arm64: /usr/bin/velmor\n",                                 "velmor"},
        {"",                                                                nullptr },
        {"velmor-doc: /usr/bin/velmor-doc\n",                               nullptr },
        {"diversion by x from: /usr/bin/velmor\nvelmor: /usr/bin/velmor\n", "velmor"},
    };
    const QString path = QStringLiteral("/usr/bin/velmor");
    for (const auto &c : cases) {
        const Installation expected = c.package ? Installation{Installation::Kind::debianPackage,
                                                               QString::fromUtf8(c.package)}
                                                : Installation{Installation::Kind::files, path};
        EXPECT_EQ(installationFromSearch(QString::fromUtf8(c.answer), path), expected) << c.answer;
    }
}

TEST(SchemeHandler, IsAnInstalledProgramThatAListNames)
{
    const struct {
        const char *what;
        const char *list, *text;
        const char *program; ///< The desktop file that is there.
        bool found;
    } cases[] = {
        {"the system's cache",     "mimeinfo.cache",
         "[MIME Cache]\nx-scheme-handler/appstream=a.desktop;b.desktop;\n",                                   "b.desktop", true },
        {"the user's choice",      "mimeapps.list",
         "[Default Applications]\nx-scheme-handler/appstream=a.desktop\n",                                    "a.desktop", true },
        {"another scheme",         "mimeinfo.cache",
         "[MIME Cache]\nx-scheme-handler/appstreams=a.desktop;\n",                                            "a.desktop", false},
        {"a program that is gone", "mimeinfo.cache",
         "[MIME Cache]\nx-scheme-handler/appstream=a.desktop;\n",                                             "b.desktop", false},
        {"one the user took away", "mimeapps.list",
         "[Removed Associations]\nx-scheme-handler/appstream=a.desktop\n",                                    "a.desktop", false},
        {"an empty list",          "mimeapps.list",  "[Default Applications]\nx-scheme-handler/appstream=\n",
         "a.desktop",                                                                                                      false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QTemporaryDir lists, programs;
        writeText(lists.filePath(QString::fromUtf8(c.list)), c.text);
        writeText(programs.filePath(QString::fromUtf8(c.program)), "[Desktop Entry]\n");
        EXPECT_EQ(hasSchemeHandler(QStringLiteral("appstream"), {lists.path(), programs.path()}),
                  c.found);
    }
}

} // namespace
} // namespace velmor
