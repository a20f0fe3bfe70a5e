#include "tests/shell/VelmorWindowFixture.h"

#include <csignal>
#include <utility>

namespace velmor {
namespace {

using testing::HasSubstr;

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

TEST_F(VelmorWindowTest, APageIsCroppedInTheDrawer)
{
    makeScan();
    ASSERT_NO_FATAL_FAILURE(startAndWaitForScanner());
    screen.click(cardTopLeft + myScans);
    const QPoint drawer = cardTopLeft + QPoint(380 + 10, 0);
    ASSERT_TRUE(waitUntil([&] { return drawerIsAt(drawer); }));
    const QPoint column = drawer + QPoint(365, 0);
    const auto isLight = [&](QPoint place, QColor color) {
        return screen.pixel(column + place) == color;
    };
    // Of the preview and its ground, with the tools above; then of the editor.
    ASSERT_TRUE(waitUntil([&] { return isLight({60, 300}, Qt::white); }));
    screen.press(QStringLiteral("c"));
    ASSERT_TRUE(
        waitUntil([&] { return isLight({60, 300}, ground) && isLight({120, 110}, Qt::white); }));
    const QByteArray before = contentOf(QStringLiteral("*.pdf"));
    for (const QPoint corner : {
             QPoint(160, 160), {400, 170},
               {390, 500},
               {150, 480}
    })
        screen.click(column + corner);
    screen.press(QStringLiteral("Return"));
    EXPECT_TRUE(waitUntil([&] { return contentOf(QStringLiteral("*.pdf")) != before; }, 60'000));
    EXPECT_TRUE(waitUntil([&] { return isLight({60, 300}, Qt::white); }));
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
        {"Ctrl+W",          "ctrl+w", 0      },
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

TEST_F(VelmorWindowTest, CalibrationShowsTheSampleAndFollowsItsSliders)
{
    ASSERT_NO_FATAL_FAILURE(startAndWaitForScanner({QStringLiteral("-uiDrawer")}));
    int height = 0;
    ASSERT_TRUE(waitUntil([&] { return std::exchange(height, cardHeight()) == height; }));
    screen.click(cardTopLeft + QPoint(28 + 20, height - 24 - 13));
    const QFileInfo preview(folder.filePath(QStringLiteral("Documents/Scans/.velmor_preview.png")));
    ASSERT_TRUE(waitUntil([&] { return QFileInfo::exists(preview.filePath()); }, 60'000));

    // Of the two pictures in the sheet, the result; its paper isn't grey any more once it is there.
    const QPoint sheet = cardTopLeft + QPoint((380 - 620) / 2, 24);
    const QPoint paper = sheet + QPoint(620 - 22 - 141, 22 + 37 + 16 + 40);
    ASSERT_TRUE(waitUntil([&] { return screen.pixel(paper).lightness() > 245; }));
    for (int i = 0; i < 5; ++i)
        screen.press(QStringLiteral("Left"));
    EXPECT_TRUE(waitUntil([&] { return screen.pixel(paper).lightness() < 245; }));
    screen.press(QStringLiteral("Escape"));
    EXPECT_TRUE(waitUntil([&] { return screen.pixel(sheet + QPoint(20, 340)) == Qt::black; }));
    EXPECT_TRUE(files(QStringLiteral("*")).isEmpty());
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
