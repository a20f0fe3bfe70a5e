#include "tests/editor_ui/EditorWindow.h"

#include <QNativeGestureEvent>
#include <QPointingDevice>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class EditorPointer : public EditorWindow {
protected:
    void wheel(QPoint at, QPoint angle, Qt::KeyboardModifiers modifiers = {}, QPoint pixels = {})
    {
        QWheelEvent event(at, window->mapToGlobal(at), pixels, angle, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window.get(), &event);
    }

    bool isNear(QPointF corner, double x, double y) const
    {
        return std::abs(corner.x() - x) < 0.01 && std::abs(corner.y() - y) < 0.01;
    }
};

TEST_F(EditorPointer, FourClicksMakeABoxWhoseCornersAreDragged)
{
    open(EditorMode::crop);
    EXPECT_FALSE(item("undoBox")->isEnabled());
    click(onPage(0.2, 0.2));
    EXPECT_TRUE(item("undoBox")->isEnabled());
    click("undoBox");
    EXPECT_THAT(editor->pending(), IsEmpty());
    EXPECT_FALSE(item("applyCrop")->isEnabled());
    clickBox();
    ASSERT_THAT(editor->boxes(), SizeIs(1));
    EXPECT_TRUE(item("applyCrop")->isEnabled());
    EXPECT_TRUE(isNear(editor->boxes()[0].corners[2], 0.8, 0.8));

    drag(onPage(0.8, 0.8), onPage(0.7, 0.9));
    EXPECT_TRUE(isNear(editor->boxes()[0].corners[2], 0.7, 0.9));
    drag(onPage(0.4, 0.4), onPage(0.5, 0.5));
    EXPECT_THAT(editor->pending(), IsEmpty());
    click("cancel");
    EXPECT_THAT(ends, ElementsAre(false));
}

TEST_F(EditorPointer, ClicksMeasureThePage)
{
    QImage page(200, 250, QImage::Format_RGB32);
    page.fill(qRgb(204, 204, 204));
    for (int x = 0; x < 100; ++x) {
        for (int y = 0; y < 250; ++y)
            page.setPixel(x, y, qRgb(51, 51, 51));
    }
    open(EditorMode::magic, {page});
    EXPECT_FALSE(item("applyMagic")->isEnabled());
    click(onPage(0.75, 0.5));
    click(onPage(0.25, 0.5));
    EXPECT_NEAR(editor->blackLum(), 0.2, 1e-6);
    EXPECT_NEAR(editor->whiteLum(), 0.8, 1e-6);
    EXPECT_TRUE(item("applyMagic")->isEnabled());
    // A click is where the button is released, and none beside the page.
    drag(onPage(0.75, 0.5), onPage(-0.1, 0.5));
    EXPECT_NEAR(editor->blackLum(), 0.2, 1e-6);
    click("reset");
    EXPECT_FALSE(editor->magicTouched());
}

TEST_F(EditorPointer, TheWheelZoomsAtThePointerWithAltAndElsePans)
{
    open(EditorMode::crop);
    const QPoint at = onPage(0.3, 0.4);
    const auto zoomAfter = [&](auto act) {
        editor->fit();
        act();
        return editor->zoom();
    };
    EXPECT_NEAR(zoomAfter([&] { wheel(at, {0, 120}, Qt::AltModifier); }), 1.2, 1e-9);
    // As X11 tells it.
    EXPECT_NEAR(zoomAfter([&] { wheel(at, {120, 0}, Qt::AltModifier); }), 1.2, 1e-9);
    EXPECT_NEAR(zoomAfter([&] { wheel(at, {0, 80}, Qt::AltModifier, {0, 10}); }), 1.1, 1e-9);
    EXPECT_NEAR(zoomAfter([&] { wheel(at, {0, 120}, Qt::ControlModifier); }), 1.2, 1e-9);
    EXPECT_EQ(zoomAfter([&] { wheel({360, 20}, {0, 120}, Qt::AltModifier); }), 1);
    EXPECT_EQ(zoomAfter([&] { wheel(at, {0, 120}); }), 1);
    EXPECT_EQ(editor->pan(), QPointF());

    editor->applyZoom(4, QPointF(360, 240));
    const QPointF place = norm(area->mapFromScene(at), editor->imageRect());
    wheel(at, {0, 120}, Qt::AltModifier);
    EXPECT_LE((onPage(place.x(), place.y()) - at).manhattanLength(), 1);
    const QPointF before = editor->pan();
    wheel(at, {0, 0}, {}, {7, -5});
    EXPECT_EQ(editor->pan() - before, QPointF(7, -5));
    wheel(at, {0, 120}, Qt::ShiftModifier);
    EXPECT_GT(editor->pan().x(), before.x() + 7);

    QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                              at, at, window->mapToGlobal(at), 0.25, {});
    const double zoomed = editor->zoom();
    QCoreApplication::sendEvent(window.get(), &pinch);
    EXPECT_NEAR(editor->zoom(), zoomed * 1.25, 1e-9);
}

TEST_F(EditorPointer, FingersTapDragAndPinch)
{
    open(EditorMode::crop);
    QPointingDevice *const screen = QTest::createTouchDevice();
    const auto touch = [&] {
        return QTest::touchEvent(window.get(), screen);
    };
    for (const auto &[x, y] : {
             std::pair(0.2, 0.2), {0.8, 0.2},
               {0.8, 0.8},
               {0.2, 0.8}
    }) {
        touch().press(0, onPage(x, y));
        touch().release(0, onPage(x, y));
    }
    ASSERT_THAT(editor->boxes(), SizeIs(1));
    touch().press(0, onPage(0.2, 0.2));
    touch().move(0, onPage(0.1, 0.3));
    touch().release(0, onPage(0.1, 0.3));
    EXPECT_TRUE(isNear(editor->boxes()[0].corners[0], 0.1, 0.3));

    const QPoint middle = onPage(0.5, 0.5);
    touch().press(0, middle - QPoint(20, 0));
    touch().move(0, middle - QPoint(20, 0)).press(1, middle + QPoint(20, 0));
    touch().move(0, middle - QPoint(40, 0)).move(1, middle + QPoint(40, 0));
    touch().release(0, middle - QPoint(40, 0)).move(1, middle + QPoint(40, 0));
    touch().release(1, middle + QPoint(40, 0));
    EXPECT_NEAR(editor->zoom(), 2, 1e-6);
    EXPECT_LE((onPage(0.5, 0.5) - middle).manhattanLength(), 1);
    EXPECT_THAT(editor->pending(), IsEmpty());
}

TEST_F(EditorPointer, FingersSetTheLevels)
{
    open(EditorMode::magic);
    QPointingDevice *const screen = QTest::createTouchDevice();
    const auto touch = [&] {
        return QTest::touchEvent(window.get(), screen);
    };
    touch().press(0, onPage(0.5, 0.5));
    touch().release(0, onPage(0.5, 0.5));
    EXPECT_EQ(editor->clicksSoFar(), 1);
    EXPECT_GT(editor->blackLum(), 0);
    EXPECT_FALSE(editor->isHovered()) << "the loupe goes with the finger";

    const QQuickItem *const slider = item("levels");
    const auto at = [&](double value) {
        return slider->mapToScene({9 + value * (slider->width() - 18), 34}).toPoint();
    };
    touch().press(0, at(1));
    touch().move(0, at(0.9));
    touch().move(0, at(0.7));
    touch().release(0, at(0.7));
    EXPECT_NEAR(editor->whiteLum(), 0.7, 0.005);
}

TEST_F(EditorPointer, AProposalLetsPressesThroughUntilItIsSeen)
{
    QImage paper(600, 800, QImage::Format_RGB32);
    paper.fill(qRgb(60, 60, 60));
    for (int y = 200; y < 600; ++y) {
        for (int x = 150; x < 450; ++x)
            paper.setPixel(x, y, qRgb(255, 255, 255));
    }
    for (const bool isSeen : {false, true}) {
        open(EditorMode::crop, {paper});
        area->setProperty("pillDelay", isSeen ? 0 : 1'000'000);
        ASSERT_TRUE(waitUntil([this] { return editor->hasProposal(); }));
        if (isSeen) {
            ASSERT_TRUE(waitUntil([this] { return item("useOutline")->isEnabled(); }));
        }
        click("useOutline");
        EXPECT_THAT(editor->boxes(), SizeIs(isSeen ? 1 : 0));
        EXPECT_THAT(editor->pending(), SizeIs(isSeen ? 0 : 1));
    }
}

TEST_F(EditorPointer, APressOnThePageTakesTheFocus)
{
    open(EditorMode::crop);
    item("cancel")->forceActiveFocus(Qt::TabFocusReason);
    click(onPage(0.5, 0.5));
    EXPECT_TRUE(area->hasActiveFocus());
}

TEST_F(EditorPointer, TheCrosshairIsThereOverTheAreaInMagicModeAlone)
{
    const auto shapeAt = [this](QPoint at) {
        QTest::mouseMove(window.get(), at);
        return window->cursor().shape();
    };
    open(EditorMode::crop);
    EXPECT_EQ(shapeAt(onPage(0.5, 0.5)), Qt::ArrowCursor);
    open(EditorMode::magic);
    EXPECT_EQ(shapeAt(onPage(0.5, 0.5)), Qt::CrossCursor);
    EXPECT_EQ(shapeAt(middleOf(item("cancel"))), Qt::ArrowCursor);
    EXPECT_EQ(shapeAt(onPage(0.5, 0.5)), Qt::CrossCursor);
    delete item("view");
    EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(EditorPointer, KnobsFollowThePointerAndStopAtEachOther)
{
    open(EditorMode::magic);
    const QQuickItem *const slider = item("levels");
    const double length = slider->width() - 18;
    const auto at = [&](double value) {
        return slider->mapToScene({9 + value * length, 34}).toPoint();
    };
    QTest::mousePress(window.get(), Qt::LeftButton, {}, at(0.3));
    EXPECT_NEAR(editor->blackLum(), 0.3, 0.005);
    QTest::mouseMove(window.get(), at(0.4));
    EXPECT_NEAR(editor->blackLum(), 0.4, 0.005);
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, at(0.4));
    drag(at(0.9), at(0.1));
    EXPECT_NEAR(editor->whiteLum(), editor->blackLum() + 0.01, 1e-9);
    EXPECT_EQ(editor->clicksSoFar(), 2);
    // Side by side, not one on the other.
    EXPECT_NEAR(middleOf(item("whiteKnob")).x() - middleOf(item("blackKnob")).x(), 18, 1.01);
}

TEST_F(EditorPointer, PagesAreTurnedWhereThereAreSome)
{
    open(EditorMode::crop);
    EXPECT_FALSE(item("nextPage")->isVisible());
    EXPECT_FALSE(item("fit")->isVisible());
    open(EditorMode::crop, {colorfulPage(), colorfulPage()});
    EXPECT_FALSE(item("previousPage")->isEnabled());
    click("zoomIn");
    EXPECT_TRUE(item("fit")->isVisible());
    click("nextPage");
    EXPECT_EQ(editor->pageIndex(), 1);
    EXPECT_FALSE(item("nextPage")->isEnabled());
    EXPECT_TRUE(item("previousPage")->isEnabled());
    EXPECT_FALSE(item("fit")->isVisible());
}

} // namespace
} // namespace velmor
