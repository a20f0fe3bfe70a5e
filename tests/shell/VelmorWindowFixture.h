#pragma once

#include "tests/Waiting.h"
#include "tests/shell/VirtualScreen.h"

#include <QDir>
#include <QFileInfo>
#include <gmock/gmock.h>

#include <optional>

namespace velmor {

inline constexpr QColor accent(0x7A, 0x5A, 0xF8);
inline constexpr QColor ground(0xF1, 0xEF, 0xF7);
inline constexpr QColor closeLight(0xFF, 0x5F, 0x57);

/// The program as a user sees it: in a window, on a screen of its own, with settings and a home
/// folder of its own, and with one sheet in the feeder.
class VelmorWindowTest : public testing::Test {
protected:
    VelmorWindowTest()
    {
        const QString feeder = folder.filePath(QStringLiteral("feeder"));
        QDir().mkpath(feeder);
        EXPECT_TRUE(
            QFile::copy(QStringLiteral(SAMPLE_PAGE), feeder + QStringLiteral("/letter.png")));
        environment = QProcessEnvironment::systemEnvironment();
        for (const char *name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
            environment.insert(QString::fromUtf8(name), folder.path());
        for (const char *name : {"WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DBUS_SESSION_BUS_ADDRESS"})
            environment.remove(QString::fromUtf8(name));
        environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
        environment.insert(QStringLiteral("VELMOR_ENGINE"), QStringLiteral(SCANENGINE_PROGRAM));
        environment.insert(QStringLiteral("SCANENGINE_FEEDER"), feeder);
    }

    ~VelmorWindowTest() override
    {
        if (program.state() != QProcess::NotRunning) {
            program.kill();
            program.waitForFinished();
        }
    }

    void start(const QString &display, const QStringList &arguments = {})
    {
        environment.insert(QStringLiteral("DISPLAY"), display);
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(VELMOR_PROGRAM), arguments);
        ASSERT_TRUE(program.waitForStarted());
    }

    /// A scan of the sheet without text, as the command makes it.
    void makeScan()
    {
        QProcess command;
        command.setProcessEnvironment(environment);
        command.start(QStringLiteral(VELMOR_PROGRAM),
                      {QStringLiteral("scan"), QStringLiteral("--no-ocr")});
        EXPECT_TRUE(command.waitForFinished(60'000) && command.exitCode() == 0);
    }

    /// Until the card is on the screen with a scanner found, which colours the round button.
    void startAndWaitForScanner(const QStringList &arguments = {})
    {
        ASSERT_FALSE(screen.name().isEmpty()) << "Xvfb didn't start.";
        start(screen.name(), arguments);
        ASSERT_TRUE(waitUntil([this] { return roundButton().has_value(); }, 60'000));
    }

    /// The middle of the longest run of its colour down the middle of the card, once that is as
    /// long as the button is high.
    std::optional<QPoint> roundButton() const
    {
        constexpr int size = 84;
        const QImage shown = screen.picture();
        int run = 0;
        for (int y = cardTopLeft.y(); y < shown.height(); ++y) {
            // Beside the white symbol in its middle.
            run = shown.pixelColor(cardTopLeft.x() + 190 - 26, y) == accent ? run + 1 : 0;
            if (run >= size * 2 / 3)
                return QPoint(cardTopLeft.x() + 190, y - run / 2);
        }
        return {};
    }

    /// From the card's top to the first black pixel below it.
    int cardHeight() const
    {
        const QImage shown = screen.picture();
        int y = cardTopLeft.y();
        while (y < shown.height() && shown.pixelColor(cardTopLeft.x() + 190, y) != Qt::black)
            ++y;
        return y - cardTopLeft.y();
    }

    bool drawerIsAt(const QPoint &topLeft) const
    {
        const QImage shown = screen.picture();
        // Past the rounded corner, on the light ground of the scans, and just outside of it.
        return shown.pixelColor(topLeft + QPoint(0, 20)).lightness() > 240 &&
               shown.pixelColor(topLeft + QPoint(-1, 20)) == Qt::black;
    }

    /// Those of the output folder.
    QStringList files(const QString &pattern) const
    {
        return QDir(folder.filePath(QStringLiteral("Documents/Scans")))
            .entryList({pattern}, QDir::Files);
    }

    /// Tells whether a file of the output folder has changed.
    QByteArray contentOf(const QString &pattern) const
    {
        QByteArray all;
        for (const QString &name : files(pattern)) {
            QFile file(folder.filePath(QStringLiteral("Documents/Scans/") + name));
            if (file.open(QIODevice::ReadOnly))
                all += file.readAll();
        }
        return all;
    }

    /// The engine's process number, or nothing.
    std::optional<pid_t> engineProcess() const
    {
        QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(program.processId()));
        if (!children.open(QIODevice::ReadOnly))
            return {};
        for (const QByteArray &child : children.readAll().split(' ')) {
            const QFileInfo exe(QStringLiteral("/proc/%1/exe").arg(QString::fromUtf8(child)));
            if (exe.symLinkTarget().endsWith(u"/scanengine"))
                return child.toInt();
        }
        return {};
    }

    void expectCleanEnd()
    {
        ASSERT_TRUE(waitUntil([this] { return program.state() == QProcess::NotRunning; }));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 0);
    }

    static constexpr QSize screenSize{2200, 1000};
    static constexpr QPoint cardTopLeft{screenSize.width() / 2 - 190, 100};
    static constexpr QPoint myScans{331, 320}; ///< The button, from there.
    QTemporaryDir folder;
    VirtualScreen screen{screenSize};
    QProcessEnvironment environment;
    QProcess program;
};

} // namespace velmor
