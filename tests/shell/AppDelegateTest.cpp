// The application in its windows, as a screen reader is told of them.

#include "shell/AppDelegate.h"

#include "shell/AppInfo.h"
#include "tests/Waiting.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <private/qguiapplication_p.h>

namespace velmor {
namespace {

using Role = QAccessible::Role;

/// The part of `root` that has this role and name, if it can be seen; else null.
QAccessibleInterface *find(QAccessibleInterface *root, Role role, const QString &name)
{
    if (!root || root->state().invisible)
        return nullptr;
    if (root->role() == role && root->text(QAccessible::Name) == name)
        return root;
    for (int i = 0; i < root->childCount(); ++i) {
        if (QAccessibleInterface *found = find(root->child(i), role, name))
            return found;
    }
    return nullptr;
}

QAccessibleInterface *find(QWindow &window, Role role, const QString &name)
{
    return find(QAccessible::queryAccessibleInterface(&window), role, name);
}

QWindow *openWindow(const QString &title)
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->title() == title)
            return window;
    }
    return nullptr;
}

class AppDelegateTest : public testing::Test {
protected:
    AppDelegateTest()
    {
        for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_DATA_DIRS"})
            qputenv(name, folder.path().toLocal8Bit());
        // Without a software centre, updates are told of in a dialog.
        qputenv("APPIMAGE", "/somewhere/Velmor.AppImage");
        qputenv("VELMOR_ENGINE", "/nonexistent/scanengine");
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
        delegate.emplace();
        EXPECT_TRUE(delegate->applicationDidFinishLaunching(AppDelegate::AdvancedPanel::closed));
        EXPECT_TRUE(QTest::qWaitForWindowActive(delegate->window()));
    }

    ~AppDelegateTest() override
    {
        delegate.reset();
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(false);
    }

    CardWindow &window() { return *delegate->window(); }

    QTemporaryDir folder;
    std::optional<AppDelegate> delegate;
};

TEST_F(AppDelegateTest, DialogsAreToldOfAndCloseByTheKeyboard)
{
    const struct {
        const char *what;
        void (AppDelegate::*open)();
        QString title;
        Role role;
        QString text;
        Qt::Key close;
        Qt::KeyboardModifiers modifiers;
    } cases[] = {
        {"About, Escape",
         &AppDelegate::showAbout,
         u"About VELMOR"_qs,                                                         Role::StaticText,
         AppInfo::tagline(),
         Qt::Key_Escape,
         {}                 },
        {"About, Return",
         &AppDelegate::showAbout,
         u"About VELMOR"_qs,                                                         Role::StaticText,
         AppInfo::tagline(),
         Qt::Key_Return,
         {}                 },
        {"Updates, Ctrl+W", &AppDelegate::checkForUpdates, u"Updates for VELMOR"_qs,
         Role::EditableText,
         updateAdvice({Installation::Kind::appImage, u"/somewhere/Velmor.AppImage"_qs}), Qt::Key_W,
         Qt::ControlModifier},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        (*delegate.*c.open)();
        QWindow *dialog = openWindow(c.title);
        ASSERT_TRUE(dialog);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        EXPECT_TRUE(waitUntil([&] { return find(*dialog, Role::Dialog, c.title); }));
        EXPECT_TRUE(find(*dialog, c.role, c.text));
        QAccessibleInterface *button = find(*dialog, Role::Button, u"Close"_qs);
        ASSERT_TRUE(button);
        EXPECT_TRUE(button->state().focused);
        QTest::keyClick(dialog, c.close, c.modifiers);
        EXPECT_TRUE(waitUntil([&] { return !openWindow(c.title); }));
    }
}

TEST_F(AppDelegateTest, TheMenuComesByKeyAndByTheRightButton)
{
    const struct {
        const char *what;
        std::function<void()> open;
        int downs; ///< From what is chosen at first to the first entry.
    } cases[] = {
        {"Menu key",     [this] { QTest::keyClick(&window(), Qt::Key_Menu); },                   0},
        {"Shift+F10",    [this] { QTest::keyClick(&window(), Qt::Key_F10, Qt::ShiftModifier); }, 0},
        {"right button",
         [this] {
             QTest::mouseClick(&window(), Qt::RightButton, {},
                               window().cardInWindow().topLeft() + QPoint(190, 50));
         },                                                                                      1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        c.open();
        const auto offers = [this](const QString &name) {
            return find(window(), Role::MenuItem, name) != nullptr;
        };
        ASSERT_TRUE(waitUntil([&] { return offers(u"About VELMOR"_qs); }));
        EXPECT_TRUE(offers(u"Check for Updates…"_qs));
        EXPECT_TRUE(offers(u"Quit"_qs));
        for (int i = 0; i < c.downs; ++i)
            QTest::keyClick(&window(), Qt::Key_Down);
        QTest::keyClick(&window(), Qt::Key_Return);
        ASSERT_TRUE(waitUntil([] { return openWindow(u"About VELMOR"_qs); }));
        openWindow(u"About VELMOR"_qs)->close();
        EXPECT_TRUE(waitUntil([&] { return !offers(u"Quit"_qs); }));
        window().requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
}

TEST_F(AppDelegateTest, TheKeyboardMinimisesAndClosesTheDrawer)
{
    delegate->model().setShowScans(true);
    QWindow *drawer = openWindow(u"My scans"_qs);
    ASSERT_TRUE(drawer && QTest::qWaitForWindowActive(drawer));
    EXPECT_TRUE(find(*drawer, Role::List, u"My scans"_qs));
    EXPECT_TRUE(find(*drawer, Role::StaticText, u"No scans yet"_qs));
    QTest::keyClick(drawer, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(delegate->model().showScans());
    window().requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    QTest::keyClick(&window(), Qt::Key_M, Qt::ControlModifier);
    EXPECT_TRUE(window().windowStates() & Qt::WindowMinimized);
}

TEST_F(AppDelegateTest, WhatCanBeClickedInAPopoverLiesInTheCard)
{
    ASSERT_GT(window().margin(), 0) << "or there would be no place outside of it";
    AppModel &model = delegate->model();
    ScanSettings settings = model.settings();
    settings.quality = ScanQuality::low;
    model.setSettings(settings);
    for (const char *name : {"A", "B", "C", "D", "E", "F", "G", "A preset with quite a long name"})
        model.saveCurrentAsPreset(QString::fromUtf8(name));
    QAccessibleInterface *chevron = nullptr;
    ASSERT_TRUE(waitUntil([&] {
        chevron = find(window(), Role::Button, u"Choose a preset"_qs);
        return chevron != nullptr;
    }));
    chevron->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QAccessibleInterface *list = nullptr;
    ASSERT_TRUE(waitUntil([&] {
        list = find(window(), Role::Grouping, u"Presets"_qs);
        return list != nullptr;
    }));
    const QRect card = window().cardGeometry();
    const QRect area = list->rect();
    EXPECT_GE(area.left(), card.left());
    EXPECT_LE(area.right(), card.right());
    const auto *column = qobject_cast<QQuickItem *>(list->object());
    const QQuickItem *view = column->parentItem()->parentItem();
    const QRectF shown = view->mapRectToScene(view->boundingRect());
    EXPECT_LE(shown.bottom(), window().cardInWindow().bottom()) << "the rest can be scrolled to";
    EXPECT_GT(column->height(), view->height());
}

TEST_F(AppDelegateTest, AClickTakesTheRingOffWhatTheKeyboardFocused)
{
    auto *settings = window().findChild<QQuickItem *>(u"settingsButton"_qs);
    ASSERT_TRUE(settings);
    settings->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(settings->property("visualFocus").toBool());
    const QPointF middle(settings->width() / 2, settings->height() / 2);
    QTest::mouseClick(&window(), Qt::LeftButton, {}, settings->mapToScene(middle).toPoint());
    EXPECT_TRUE(settings->hasActiveFocus());
    EXPECT_FALSE(settings->property("visualFocus").toBool());
}

} // namespace
} // namespace velmor
