#include "browser/GalleryPanel.h"

#include "browser/DrawerPlacement.h"
#include "controls/Motion.h"
#include "tests/Waiting.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QScreen>
#include <gmock/gmock.h>

namespace velmor {
namespace {

/// A panel in a main window, as QML makes it. Its content counts how often it is made.
class GalleryPanelTest : public testing::Test {
protected:
    GalleryPanelTest()
    {
        engine.addImportPath(QStringLiteral(":/qt/qml"));
        parent.setCardSize({200, 300});
        parent.setCardPosition(start);
        parent.show();

        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Velmor.Browser\nimport Velmor.Controls\n"
                          "GalleryPanel { Item { objectName: 'content'; property int clicks } }",
                          {});
        panel.reset(qobject_cast<GalleryPanel *>(component.create()));
        EXPECT_TRUE(panel) << component.errorString().toStdString();
    }

    void attach() { panel->setParentItem(parent.contentItem()); }
    [[nodiscard]] QPoint drawerPosition() const { return panel->child()->cardGeometry().topLeft(); }
    [[nodiscard]] bool fullyOpen() const
    {
        return panel->child()->presence() == 1 && panel->child()->slide() == 0;
    }
    /// What the screen leaves the drawer beside its window, the shadows taken off; all of it where
    /// that is too little.
    [[nodiscard]] int roomForDrawer() const
    {
        const int screen =
            parent.screen()->availableGeometry().width() - 2 * panel->child()->margin();
        const int beside = screen - parent.cardWidth() - drawerGap;
        return std::min(900, beside < panel->child()->smallestCard().width() ? screen : beside);
    }
    void open()
    {
        panel->setPresented(true);
        ASSERT_TRUE(waitUntil([this] { return fullyOpen(); }));
    }
    void close()
    {
        panel->setPresented(false);
        ASSERT_TRUE(waitUntil([this] { return !panel->child()->isVisible(); }));
    }

    static constexpr QPoint start{20, 40};
    QQmlEngine engine;
    CardWindow parent;
    std::unique_ptr<GalleryPanel> panel;
};

TEST_F(GalleryPanelTest, OpensBesideItsWindowSlidingAndFadingIn)
{
    attach();
    panel->setPresented(true);
    ASSERT_TRUE(panel->child());
    EXPECT_TRUE(panel->shown());
    EXPECT_TRUE(panel->child()->isVisible());
    EXPECT_EQ(panel->child()->cardSize(), QSize(roomForDrawer(), 580));
    EXPECT_EQ(panel->child()->presence(), 0);
    EXPECT_EQ(panel->child()->slide(), -14);
    EXPECT_EQ(panel->child()->transientParent(), &parent);
    EXPECT_TRUE(waitUntil([this] { return fullyOpen(); }));
}

TEST_F(GalleryPanelTest, WithoutAWindowAnOpeningWaits)
{
    panel->setPresented(true);
    EXPECT_FALSE(panel->shown());
    EXPECT_FALSE(panel->child());
    attach();
    EXPECT_TRUE(panel->shown());
    EXPECT_TRUE(panel->child()->isVisible());
}

TEST_F(GalleryPanelTest, ClosesInItsPlaceByFadingAlone)
{
    attach();
    open();
    const QPoint place = drawerPosition();
    panel->setPresented(false);
    EXPECT_FALSE(panel->shown());
    EXPECT_TRUE(panel->child()->isVisible());
    EXPECT_TRUE(waitUntil([this] { return panel->child()->presence() < 1; }));
    EXPECT_EQ(drawerPosition(), place);
    EXPECT_EQ(panel->child()->slide(), 0);
    EXPECT_TRUE(waitUntil([this] { return !panel->child()->isVisible(); }));
}

TEST_F(GalleryPanelTest, OpenedAgainWhileItClosesItStays)
{
    attach();
    open();
    panel->setPresented(false);
    ASSERT_TRUE(waitUntil([this] { return panel->child()->presence() < 0.9; }));
    bool hidden = false;
    const QObject watch;
    QObject::connect(panel->child(), &QWindow::visibleChanged, &watch,
                     [&](bool visible) { hidden = hidden || !visible; });
    panel->setPresented(true);
    EXPECT_GT(panel->child()->presence(), 0);
    EXPECT_TRUE(waitUntil([this] { return fullyOpen(); }));
    EXPECT_FALSE(hidden);
}

TEST_F(GalleryPanelTest, KeepsItsContentAndSizeButIsPlacedAnew)
{
    attach();
    open();
    auto *content = panel->child()->findChild<QQuickItem *>(QStringLiteral("content"));
    ASSERT_TRUE(content);
    content->setProperty("clicks", 7);
    panel->child()->setCardSize({490, 500});
    const GalleryWindow *window = panel->child();
    close();
    parent.setCardPosition(start + QPoint(5, 60));
    open();
    EXPECT_EQ(panel->child(), window);
    EXPECT_EQ(panel->child()->cardSize(), QSize(490, 500));
    EXPECT_EQ(content->property("clicks"), 7);
    const int lowest = parent.screen()->availableGeometry().bottom() + 1 - 500;
    EXPECT_EQ(drawerPosition().y(), std::min(start.y() + 60, lowest));
}

TEST_F(GalleryPanelTest, GoesAlongWithItsWindowFromWhereverItWasPut)
{
    attach();
    open();
    const QPoint place = drawerPosition();
    const auto drawerComesTo = [this](const QPoint &expected) {
        return waitUntil([&] { return drawerPosition() == expected; });
    };
    // The second step comes while the drawer is on its way for the first.
    const auto connection = QObject::connect(
        &parent, &QWindow::yChanged, [&] { parent.setCardPosition(start + QPoint(10, -5)); });
    parent.setCardPosition(start + QPoint(7, -9));
    EXPECT_TRUE(drawerComesTo(place + QPoint(10, -5)));
    QObject::disconnect(connection);

    // Moved by the window manager, and its parent at the same time.
    panel->child()->setPosition(panel->child()->position() + QPoint(30, 20));
    parent.setCardPosition(start);
    EXPECT_TRUE(drawerComesTo(place + QPoint(30, 20)));
}

TEST_F(GalleryPanelTest, WithReducedMotionItFadesInItsPlace)
{
    Motion::of(engine)->setReduced(true);
    attach();
    panel->setPresented(true);
    EXPECT_EQ(panel->child()->slide(), 0);
    EXPECT_EQ(panel->child()->presence(), 0);
    EXPECT_TRUE(waitUntil([this] { return fullyOpen(); }));
}

TEST_F(GalleryPanelTest, TheUserClosesItFromWithinAndByTheDesktop)
{
    attach();
    int changes = 0;
    const QObject watch;
    QObject::connect(panel.get(), &GalleryPanel::isPresentedChanged, &watch, [&] { ++changes; });
    open();
    Q_EMIT panel->child()->closeAsked();
    EXPECT_FALSE(panel->isPresented());
    EXPECT_EQ(changes, 2);
    open();
    panel->child()->close();
    EXPECT_FALSE(panel->isPresented());
    open();
    EXPECT_TRUE(panel->child()->isVisible());
}

} // namespace
} // namespace velmor
