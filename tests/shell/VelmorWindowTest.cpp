#include "tests/Waiting.h"
#include "tests/shell/VirtualScreen.h"

#include <QDir>
#include <QFileInfo>
#include <gmock/gmock.h>

#include <csignal>
#include <optional>

namespace velmor {
namespace {

using testing::HasSubstr;

constexpr QColor accent(0x7A, 0x5A, 0xF8);
constexpr QColor closeLight(0xFF, 0x5F, 0x57);

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
        // Past the rounded corner, and just outside of the left edge.
        return shown.pixelColor(topLeft + QPoint(0, 20)) == Qt::white &&
               shown.pixelColor(topLeft + QPoint(-1, 20)) == Qt::black;
    }

    /// Those of the output folder.
    QStringList files(const QString &pattern) const
    {
        return QDir(folder.filePath(QStringLiteral("Documents/Scans")))
            .entryList({pattern}, QDir::Files);
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
    QTemporaryDir folder;
    VirtualScreen screen{screenSize};
    QProcessEnvironment environment;
    QProcess program;
};

TEST_F(VelmorWindowTest, TheRoundButtonMakesAPdfAndTheDrawerShowsIt)
{
    ASSERT_NO_FATAL_FAILURE(startAndWaitForScanner());
    const QPoint button = *roundButton();
    screen.click(button);
    // The feeder is waited for until the button ends the job.
    ASSERT_TRUE(waitUntil([this] { return !files(QStringLiteral("*.png")).isEmpty(); }));
    screen.click(button);
    ASSERT_TRUE(waitUntil([this] { return !files(QStringLiteral("*.pdf")).isEmpty(); }, 60'000));
    QPoint drawer = cardTopLeft + QPoint(380 + 10, 0);
    EXPECT_TRUE(waitUntil([&] { return drawerIsAt(drawer); }));

    const QPoint way(-70, 40);
    screen.drag(cardTopLeft + QPoint(190, 12), cardTopLeft + QPoint(190, 12) + way);
    drawer += way;
    EXPECT_TRUE(waitUntil([&] { return drawerIsAt(drawer); }));
}

TEST_F(VelmorWindowTest, TheCloseLightEndsTheApplicationAndItsEngine)
{
    ASSERT_NO_FATAL_FAILURE(startAndWaitForScanner());
    const std::optional<pid_t> engine = engineProcess();
    ASSERT_TRUE(engine);
    const QPoint light = cardTopLeft + QPoint(12 + 6, 12 + 6);
    EXPECT_EQ(screen.pixel(light), closeLight);
    screen.click(light);
    expectCleanEnd();
    EXPECT_TRUE(waitUntil([&] { return kill(*engine, 0) != 0; }));
}

TEST_F(VelmorWindowTest, OtherWaysToQuitEndItCleanlyToo)
{
    const struct {
        const char *what;
        const char *key; ///< Null for a signal.
        int signal;
    } cases[] = {
        {"Ctrl+Q",          "ctrl+q", 0      },
        {"termination",     nullptr,  SIGTERM},
        {"an interruption", nullptr,  SIGINT },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        ASSERT_NO_FATAL_FAILURE(startAndWaitForScanner());
        const std::optional<pid_t> engine = engineProcess();
        ASSERT_TRUE(engine);
        if (c.key)
            screen.press(QString::fromUtf8(c.key));
        else
            kill(static_cast<pid_t>(program.processId()), c.signal);
        ASSERT_NO_FATAL_FAILURE(expectCleanEnd());
        EXPECT_TRUE(waitUntil([&] { return kill(*engine, 0) != 0; }));
    }
}

TEST_F(VelmorWindowTest, TheStartOptionOpensThePanelOfAllSettings)
{
    ASSERT_NO_FATAL_FAILURE(startAndWaitForScanner());
    const int plain = cardHeight();
    screen.press(QStringLiteral("ctrl+q"));
    expectCleanEnd();
    ASSERT_NO_FATAL_FAILURE(startAndWaitForScanner({QStringLiteral("-uiDrawer")}));
    EXPECT_TRUE(waitUntil([&] { return cardHeight() > plain + 100; }));
}

TEST_F(VelmorWindowTest, WithoutADisplayItSaysSo)
{
    const struct {
        const char *what, *display, *platform;
    } cases[] = {
        {"no display at all",      "",      ""    },
        {"a display that is gone", ":9999", ""    },
        {"an unknown platform",    "",      "nope"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QString::fromUtf8(c.platform));
        start(QString::fromUtf8(c.display));
        ASSERT_TRUE(waitUntil([this] { return program.state() == QProcess::NotRunning; }));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 7);
        const QByteArray said = program.readAllStandardError();
        EXPECT_THAT(said.toStdString(), HasSubstr("no display"));
        EXPECT_EQ(said.count('\n'), 1) << said.constData();
    }
}

} // namespace
} // namespace velmor
