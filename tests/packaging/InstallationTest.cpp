#include "cli/ExitCode.h"
#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/pipeline/TestPages.h"
#include "tests/scanners/SaneFolder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace velmor {
namespace {

using scanengine::SaneFolder;
using testing::HasSubstr;

/// An installation in a folder of its own, far from the build and from where it was meant to be.
class InstallationTest : public testing::Test {
protected:
    void SetUp() override
    {
        QProcess installer;
        installer.start(QStringLiteral(CMAKE_PROGRAM),
                        {QStringLiteral("--install"), QStringLiteral(BUILD_FOLDER),
                         QStringLiteral("--prefix"), prefix()});
        ASSERT_EQ(exitCode(installer), 0) << installer.readAllStandardError().constData();
    }

    [[nodiscard]] QString prefix() const { return m_folder.filePath(QStringLiteral("prefix")); }

    static int exitCode(QProcess &process)
    {
        const bool ended =
            waitUntil([&process] { return process.state() == QProcess::NotRunning; }, 120'000);
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    /// Runs the installed command, with scanners of its own and nothing that names a program or a
    /// display; its exit code.
    int run(const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name :
             {"VELMOR_ENGINE", "VELMOR_RECOGNIZER", "VELMOR_RENDERER", "SCANENGINE_WORKER",
              "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QString::fromUtf8(name));
        for (const char *name : {"HOME", "XDG_CONFIG_HOME"})
            environment.insert(QString::fromUtf8(name), m_folder.path());
        environment.insert(m_scanners.environment());
        environment.insert(QStringLiteral("SCANENGINE_FEEDER"), m_paper.path());
        QProcess command;
        command.setProcessEnvironment(environment);
        command.start(prefix() + QStringLiteral("/bin/velmor"), arguments);
        const int code = exitCode(command);
        m_output = QString::fromLocal8Bit(command.readAllStandardOutput()).trimmed();
        m_errors = QString::fromLocal8Bit(command.readAllStandardError());
        return code;
    }

    QTemporaryDir m_folder;
    QTemporaryDir m_paper; ///< The sheets in the feeder.
    SaneFolder m_scanners{"test", "number_of_devices 1\n"};
    QString m_output;
    QString m_errors;
};

TEST_F(InstallationTest, ItsProgramsFindEachOther)
{
    ASSERT_TRUE(QFile::copy(QStringLiteral(SAMPLE_FOLDER "/receipt.jpg"),
                            m_paper.filePath(QStringLiteral("receipt.jpg"))));
    ASSERT_EQ(run({QStringLiteral("scan")}), 0) << qPrintable(m_errors);
    EXPECT_THAT(
        outputOf(QStringLiteral("pdftotext"), {m_output, QStringLiteral("-")}).toStdString(),
        HasSubstr("Lidmere"));

    EXPECT_EQ(run({QStringLiteral("devices")}), 0) << qPrintable(m_errors);
    EXPECT_THAT(m_output.toStdString(), HasSubstr("test:0\tfrontend-tester"));

    // The window's program was found, and has no display.
    EXPECT_EQ(run({}), static_cast<int>(ExitCode::noDisplay)) << qPrintable(m_errors);
}

TEST_F(InstallationTest, TheDesktopFindsTheProgramAndItsIcon)
{
    QFile entry(prefix() + QStringLiteral("/share/applications/org.velmor.Velmor.desktop"));
    ASSERT_TRUE(entry.open(QIODevice::ReadOnly));
    QString program;
    QString icon;
    while (!entry.atEnd()) {
        const QString line = QString::fromUtf8(entry.readLine()).trimmed();
        if (line.startsWith(u"Exec="))
            program = line.section(u'=', 1).section(u' ', 0, 0);
        if (line.startsWith(u"Icon="))
            icon = line.section(u'=', 1);
    }
    EXPECT_TRUE(QFileInfo(prefix() + QStringLiteral("/bin/") + program).isExecutable());

    const QString icons = prefix() + QStringLiteral("/share/icons/hicolor/");
    EXPECT_TRUE(QFile::exists(icons + QStringLiteral("scalable/apps/%1.svg").arg(icon)));
    for (const int size : {16, 24, 32, 48, 64, 128, 256, 512}) {
        SCOPED_TRACE(size);
        const QImage image(icons + QStringLiteral("%1x%1/apps/%2.png").arg(size).arg(icon));
        EXPECT_EQ(image.size(), QSize(size, size));
    }
}

} // namespace
} // namespace velmor
