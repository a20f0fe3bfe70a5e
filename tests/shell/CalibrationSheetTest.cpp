#include "shell/CalibrationSheet.h"

#include "shell/AppDelegate.h"
#include "tests/Waiting.h"

#include <QGuiApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>

namespace velmor {
namespace {

TEST(SheetPosition, LiesOverTheCardAndOnTheScreen)
{
    const QSize sheet(620, 700);
    const QRect screen(0, 0, 1920, 1080);
    const struct {
        const char *what;
        QRect parent, screen;
        QPoint wanted;
    } cases[] = {
        {"in the middle of the card", {770, 100, 380, 300},   screen,              {650, 124}  },
        {"at the right edge",         {1500, 100, 380, 300},  screen,              {1300, 124} },
        {"at the left edge",          {-50, 100, 380, 300},   screen,              {0, 124}    },
        {"at the bottom",             {770, 700, 380, 300},   screen,              {650, 380}  },
        {"on a second screen",        {1920, -500, 380, 300}, {1920, 0, 640, 600}, {1920, 0}   },
        {"nobody knows the screen",   {-900, 900, 380, 300},  {},                  {-1020, 924}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(sheetPosition(sheet, c.parent, c.screen), c.wanted) << c.what;
}

class CalibrationSheetTest : public testing::Test {
protected:
    CalibrationSheetTest()
    {
        qputenv("HOME", folder.path().toLocal8Bit());
        qputenv("VELMOR_ENGINE", "/nonexistent/scanengine");
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        EXPECT_TRUE(
            delegate.emplace().applicationDidFinishLaunching(AppDelegate::AdvancedPanel::closed));
        EXPECT_TRUE(QTest::qWaitForWindowActive(delegate->window()));
    }

    [[nodiscard]] static CardWindow *sheet()
    {
        for (QWindow *window : QGuiApplication::topLevelWindows()) {
            if (window->isVisible() && window->title() == u"Calibrate")
                return qobject_cast<CardWindow *>(window);
        }
        return nullptr;
    }

    QTemporaryDir folder;
    std::optional<AppDelegate> delegate;
};

TEST_F(CalibrationSheetTest, TheKeyboardGoesToItAndBack)
{
    AppModel &model = delegate->model();
    const struct {
        const char *what;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
    } cases[] = {
        {"Escape",                Qt::Key_Escape,  {}                 },
        {"Ctrl+W",                Qt::Key_W,       Qt::ControlModifier},
        {"closed by the desktop", Qt::Key_unknown, {}                 },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        model.setShowCalibration(true);
        CardWindow *window = sheet();
        ASSERT_TRUE(window);
        EXPECT_EQ(window->transientParent(), delegate->window());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        ASSERT_TRUE(waitUntil([&] { return window->activeFocusItem() != nullptr; }));
        model.setShowCalibration(true);
        EXPECT_EQ(sheet(), window) << "one is enough";
        if (c.key == Qt::Key_unknown)
            window->close();
        else
            QTest::keyClick(window, c.key, c.modifiers);
        EXPECT_FALSE(model.showCalibration());
        EXPECT_TRUE(model.hasCalibrated());
        EXPECT_FALSE(sheet());
        EXPECT_TRUE(QTest::qWaitForWindowActive(delegate->window()));
    }
    model.setShowCalibration(true);
    delegate.reset();
    EXPECT_FALSE(sheet()) << "it goes with the application";
}

} // namespace
} // namespace velmor
