#include "windows/CardWindow.h"

#include "tests/Waiting.h"

#include <QQuickItem>
#include <QTest>
#include <gmock/gmock.h>

namespace velmor {
namespace {

constexpr int shadow = 40;

class TestWindow : public CardWindow {
public:
    explicit TestWindow(Resizing resizing) : CardWindow(resizing)
    {
        setProperty("shadowMargin", shadow);
        setProperty("smallestCard", QSize(100, 80));
        setCardSize({300, 200});
        setCardPosition({200, 150});
    }

    /// Presses, moves in two steps, releases.
    void dragPointer(const QPoint &from, const QPoint &to)
    {
        // Each in the window's coordinates at that time.
        QTest::mousePress(this, Qt::LeftButton, {}, from - position());
        QTest::mouseMove(this, (from + to) / 2 - position());
        QTest::mouseMove(this, to - position());
        QTest::mouseRelease(this, Qt::LeftButton, {}, to - position());
    }
};

TEST(CardWindow, HasRoomForTheShadowAroundTheCard)
{
    const TestWindow window(CardWindow::Resizing::byContent);
    EXPECT_EQ(window.cardGeometry(), QRect(200, 150, 300, 200));
    EXPECT_EQ(window.geometry(), QRect(160, 110, 380, 280));
}

TEST(CardWindow, IsAheadOfAGrowingCardAndFitsItInTheEnd)
{
    TestWindow window(CardWindow::Resizing::byContent);
    window.show();
    window.setCardHeight(201);
    const int ahead = window.height();
    for (int height = 202; height <= 260; ++height) {
        window.setCardHeight(height);
        EXPECT_EQ(window.height(), ahead);
    }
    EXPECT_GE(ahead, 260 + 2 * shadow);
    EXPECT_TRUE(waitUntil([&] { return window.height() == 260 + 2 * shadow; }));
    window.setCardHeight(220);
    EXPECT_EQ(window.height(), 260 + 2 * shadow);
    EXPECT_TRUE(waitUntil([&] { return window.height() == 220 + 2 * shadow; }));
    EXPECT_EQ(window.cardGeometry(), QRect(200, 150, 300, 220));
}

TEST(CardWindow, IsMovedByItsBackground)
{
    TestWindow window(CardWindow::Resizing::byContent);
    window.show();
    QList<QPoint> steps;
    QObject::connect(&window, &CardWindow::dragged, [&](const QPoint &at) { steps.append(at); });
    window.dragPointer({350, 250}, {390, 230});
    EXPECT_EQ(window.cardGeometry(), QRect(240, 130, 300, 200));
    EXPECT_EQ(steps, QList<QPoint>({
                         {220, 140},
                         {240, 130}
    }));
    QTest::mouseMove(&window, {100, 100});
    EXPECT_EQ(window.cardGeometry().topLeft(), QPoint(240, 130));
}

TEST(CardWindow, AnUnsteadyClickMovesNothing)
{
    TestWindow window(CardWindow::Resizing::byContent);
    window.show();
    window.dragPointer({350, 250}, {352, 251});
    EXPECT_EQ(window.cardGeometry().topLeft(), QPoint(200, 150));
}

TEST(CardWindow, APressThatAnItemTakesMovesNothing)
{
    TestWindow window(CardWindow::Resizing::byContent);
    class Button : public QQuickItem {
    public:
        explicit Button(QQuickItem *parent) : QQuickItem(parent)
        {
            setAcceptedMouseButtons(Qt::LeftButton);
            setWidth(200);
            setHeight(200);
        }
        void mousePressEvent(QMouseEvent *event) override { event->accept(); }
    } button(window.contentItem());
    window.show();
    window.dragPointer(window.position() + QPoint(100, 100), window.position() + QPoint(150, 150));
    EXPECT_EQ(window.cardGeometry().topLeft(), QPoint(200, 150));
}

TEST(CardWindow, OnlyTheUsersWindowsAreResizedByTheirEdges)
{
    const struct {
        const char *what;
        CardWindow::Resizing resizing;
        QRect expected;
    } cases[] = {
        {"by the content", CardWindow::Resizing::byContent, {180, 140, 300, 200}},
        {"by the user",    CardWindow::Resizing::byUser,    {180, 140, 320, 210}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        TestWindow window(c.resizing);
        window.show();
        window.dragPointer({200, 150}, {180, 140});
        EXPECT_EQ(window.cardGeometry(), c.expected);
    }
}

} // namespace
} // namespace velmor
