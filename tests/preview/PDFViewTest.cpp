#include "controls/Motion.h"
#include "preview/PDFViewCoordinator.h"
#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/pipeline/TestPages.h"
#include "tests/preview/PreviewDocuments.h"

#include <QAccessible>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QNativeGestureEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>

namespace velmor {
namespace {

/// A window that is filled by a preview, without smooth motion.
class PreviewWindow : public testing::Test {
protected:
    PreviewWindow()
    {
        m_engine.addImportPath(QStringLiteral(":/qt/qml"));
        QQmlComponent component(&m_engine);
        component.setData(R"(
            import QtQuick; import QtQuick.Window; import Velmor.Preview
            Window {
                id: window
                property url url; property int revision; property PDFViewBox box: PDFViewBox {}
                width: 400; height: 300; visible: true
                PDFKitView {
                    anchors.fill: parent
                    url: window.url; revision: window.revision; box: window.box
                }
            })",
                          QUrl(QStringLiteral("qrc:/Preview.qml")));
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        if (!m_window) {
            ADD_FAILURE() << component.errorString().toStdString();
            return;
        }
        Motion::of(m_engine)->setReduced(true);
        m_view = m_window->findChild<PDFView *>();
        m_coordinator = m_window->findChild<PDFViewCoordinator *>();
        m_box = m_window->property("box").value<PDFViewBox *>();
        QObject::connect(m_view, &PDFView::documentChanged, m_view,
                         [this] { m_loads += m_view->isLoading() ? 0 : 1; });
        m_window->requestActivate();
        EXPECT_TRUE(waitUntil([this] { return m_window->isActive() && m_loads == 1; }));
    }

    /// Writes a document to a file, and answers its address.
    QUrl file(const QList<QStringList> &pages, const QString &name = u"a.pdf"_qs)
    {
        const QByteArray bytes = documentWith(pages).bytes().value();
        return QUrl::fromLocalFile(writeFile(m_folder.filePath(name), bytes));
    }

    /// Shows a file and waits for what comes of it.
    [[nodiscard]] bool show(const QUrl &url, int revision = 0)
    {
        const int loads = m_loads;
        m_window->setProperty("url", url);
        m_window->setProperty("revision", revision);
        return waitUntil([&] { return m_loads > loads; });
    }

    [[nodiscard]] bool isSharp()
    {
        return waitUntil([this] { return !m_view->pictures().isBusy(); });
    }

    void wheel(QPointF at, QPoint angle, Qt::KeyboardModifiers modifiers = {})
    {
        QWheelEvent event(at, m_window->mapToGlobal(at), {}, angle, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_window.get(), &event);
    }

    void pinch(QPointF at, double value)
    {
        QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(),
                                  2, at, at, m_window->mapToGlobal(at), value, {});
        QCoreApplication::sendEvent(m_window.get(), &event);
    }

    void drag(Qt::MouseButton button, QPoint from, QPoint to)
    {
        QTest::mousePress(m_window.get(), button, {}, from);
        QTest::mouseMove(m_window.get(), (from + to) / 2);
        QTest::mouseMove(m_window.get(), to);
        QTest::mouseRelease(m_window.get(), button, {}, to);
    }

    QTemporaryDir m_folder;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    PDFView *m_view = nullptr;
    PDFViewCoordinator *m_coordinator = nullptr;
    PDFViewBox *m_box = nullptr;
    int m_loads = 0;
};

TEST_F(PreviewWindow, FollowsTheFrameUntilTheUserZooms)
{
    const QUrl url = file({{}, {}, {}});
    ASSERT_TRUE(show(url));
    EXPECT_DOUBLE_EQ(m_view->scaleFactor(), 2);
    m_window->resize(300, 300);
    EXPECT_TRUE(waitUntil([this] { return m_view->scaleFactor() == 1.5; }));
    EXPECT_FALSE(m_coordinator->userZoomed());

    wheel({50, 50}, {0, 120}, Qt::ControlModifier);
    const double zoomed = m_view->scaleFactor();
    EXPECT_GT(zoomed, 1.5);
    EXPECT_TRUE(m_coordinator->userZoomed());
    m_window->resize(400, 300);
    EXPECT_TRUE(waitUntil([this] { return m_view->width() == 400; }));
    EXPECT_EQ(m_view->scaleFactor(), zoomed);

    QTest::keyClick(m_window.get(), Qt::Key_0, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(m_view->scaleFactor(), 2);
    m_window->resize(300, 300);
    EXPECT_TRUE(waitUntil([this] { return m_view->scaleFactor() == 1.5; }));
}

TEST_F(PreviewWindow, OnlyAnotherFileOrRevisionIsLoaded)
{
    const QUrl url = file({{}, {}, {}});
    ASSERT_TRUE(show(url));
    m_view->zoomAbout(3, {0, 0});
    m_view->scrollToShare({0.5, 0.5});
    const QRectF visible = m_view->viewport().visible();
    m_coordinator->setUrl(url);
    m_coordinator->update();
    EXPECT_TRUE(m_view->document());
    EXPECT_EQ(m_view->viewport().visible(), visible);
    EXPECT_EQ(m_loads, 2);

    ASSERT_TRUE(show(url, 1));
    EXPECT_DOUBLE_EQ(m_view->scaleFactor(), 2);
    EXPECT_EQ(m_view->viewport().visible().topLeft(), QPointF(0, 0));
    ASSERT_TRUE(show(file({{}}, u"b.pdf"_qs), 4));
    EXPECT_EQ(m_loads, 4) << "both at once are loaded once";
    EXPECT_EQ(m_view->pageCount(), 1);
}

TEST_F(PreviewWindow, AFileThatCantBeOpenedLeavesItEmpty)
{
    const QUrl folder = QUrl::fromLocalFile(m_folder.path());
    const struct {
        const char *what;
        QUrl url;
    } cases[] = {
        {"missing", QUrl::fromLocalFile(m_folder.filePath(u"none.pdf"_qs))},
        {"folder", folder},
        {"no PDF", QUrl::fromLocalFile(writeFile(m_folder.filePath(u"x.pdf"_qs), "Hello."))},
        {"none", QUrl()},
    };
    const QUrl sound = file({{}});
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        ASSERT_TRUE(show(sound));
        ASSERT_TRUE(show(c.url));
        EXPECT_FALSE(m_view->document());
        EXPECT_EQ(m_view->pageCount(), 0);
        EXPECT_EQ(m_box->currentViewport(c.url), EditorViewport());
    }
}

TEST_F(PreviewWindow, AFileThatVanishesStaysInSight)
{
    const QUrl url = file(QList<QStringList>(9));
    ASSERT_TRUE(show(url));
    ASSERT_TRUE(QFile::remove(url.toLocalFile()));
    m_view->scrollToShare({0, 1});
    ASSERT_TRUE(isSharp());
    const PagePicture *const last = m_view->pictures().picture(8, PictureExtent::whole);
    ASSERT_TRUE(last);
    EXPECT_EQ(qGray(last->image.pixel(5, 5)), 128);
    EXPECT_EQ(qGray(m_window->grabWindow().pixel(200, 250)), 128);
}

TEST_F(PreviewWindow, ZoomsAboutThePointer)
{
    ASSERT_TRUE(show(file(QList<QStringList>(5))));
    m_view->scrollToShare({0, 0.4});
    const QPointF at(120, 80);
    const auto change = [&](const auto &zoom) {
        const PagePlace before = m_view->viewport().placeAt(at).value();
        const double scale = m_view->scaleFactor();
        zoom();
        const PagePlace after = m_view->viewport().placeAt(at).value();
        EXPECT_EQ(after.page, before.page);
        EXPECT_NEAR(after.point.x(), before.point.x(), 1e-6);
        EXPECT_NEAR(after.point.y(), before.point.y(), 1e-6);
        return m_view->scaleFactor() / scale;
    };
    EXPECT_NEAR(change([&] { wheel(at, {0, 240}, Qt::ControlModifier); }), 1.44, 1e-6);
    EXPECT_NEAR(change([&] { pinch(at, 0.5); }), 1.5, 1e-6);
    EXPECT_NEAR(change([&] { wheel(at, {0, -120}, Qt::ControlModifier); }), 1 / 1.2, 1e-6);
}

TEST_F(PreviewWindow, WheelDragAndKeysMoveThePages)
{
    ASSERT_TRUE(show(file(QList<QStringList>(5))));
    m_view->zoomAbout(2, {0, 0});
    m_view->forceActiveFocus();
    const auto moved = [&](const auto &move) {
        m_view->scrollToShare({0.3, 0.4});
        const QPointF before = m_view->viewport().visible().topLeft();
        move();
        return (m_view->viewport().visible().topLeft() - before) * m_view->scaleFactor();
    };
    const auto key = [&](Qt::Key code) {
        return [this, code] {
            QTest::keyClick(m_window.get(), code);
        };
    };
    EXPECT_GT(moved([&] { wheel({90, 90}, {0, -120}); }).y(), 20);
    EXPECT_GT(moved([&] { wheel({90, 90}, {0, -120}, Qt::ShiftModifier); }).x(), 20);
    EXPECT_LT(moved([&] { wheel({90, 90}, {120, 0}); }).x(), -20);
    const QPointF dragged = moved([&] { drag(Qt::MiddleButton, {100, 100}, {70, 180}); });
    EXPECT_NEAR(dragged.x(), 30, 1e-6);
    EXPECT_NEAR(dragged.y(), -80, 1e-6);
    EXPECT_GT(moved(key(Qt::Key_Right)).x(), 20);
    EXPECT_LT(moved(key(Qt::Key_Up)).y(), -20);
    const double screenful = moved(key(Qt::Key_PageDown)).y();
    EXPECT_TRUE(screenful > 200 && screenful < 300);
    QTest::keyClick(m_window.get(), Qt::Key_End);
    EXPECT_DOUBLE_EQ(m_view->visibleShare().bottom(), 1);
    QTest::keyClick(m_window.get(), Qt::Key_Home);
    EXPECT_EQ(m_view->visibleShare().y(), 0);
    QTest::keyPress(m_window.get(), Qt::Key_Space);
    EXPECT_NEAR(moved([&] { drag(Qt::LeftButton, {100, 100}, {100, 60}); }).y(), 40, 1e-6);
    QTest::keyRelease(m_window.get(), Qt::Key_Space);
}

TEST_F(PreviewWindow, TheScrollBarIsDragged)
{
    ASSERT_TRUE(show(file(QList<QStringList>(5))));
    drag(Qt::LeftButton, {396, 5}, {396, 155});
    EXPECT_NEAR(m_view->visibleShare().y(), 0.5, 0.05);
    m_view->scrollToShare({0, 0});
    drag(Qt::LeftButton, {396, 5}, {396, 80});
    EXPECT_NEAR(m_view->visibleShare().y(), 0.25, 0.05);
}

TEST_F(PreviewWindow, APageWithoutTextIsMovedByTheLeftButton)
{
    ASSERT_TRUE(show(file({{}, {}})));
    QTest::mouseMove(m_window.get(), {100, 100});
    EXPECT_TRUE(waitUntil([this] {
        drag(Qt::LeftButton, {100, 100}, {100, 60});
        return m_view->viewport().visible().top() > 0;
    }));
    EXPECT_TRUE(m_view->selection().isEmpty());
}

TEST_F(PreviewWindow, ADoubleClickSelectsAWord)
{
    ASSERT_TRUE(show(file({{u"one longword two"_qs}})));
    QTest::mouseDClick(m_window.get(), Qt::LeftButton, {}, {200, 75});
    ASSERT_TRUE(waitUntil([this] { return !m_view->selection().isEmpty(); }));
    QTest::keyClick(m_window.get(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(waitUntil([] { return QGuiApplication::clipboard()->text() == u"longword"_qs; }));
}

TEST_F(PreviewWindow, SelectedTextIsCopied)
{
    ASSERT_TRUE(show(file({
        {u"first line"_qs, u"second line"_qs},
        {u"third"_qs}
    })));
    QGuiApplication::clipboard()->clear();
    const auto clipboardIs = [](const QString &text) {
        return waitUntil([&] { return QGuiApplication::clipboard()->text() == text; });
    };
    // At scale 2 the lines are 75 and 135 pixels from the top.
    drag(Qt::LeftButton, {5, 135}, {395, 135});
    ASSERT_TRUE(waitUntil([this] { return !m_view->selection().isEmpty(); }));
    QTest::keyClick(m_window.get(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(clipboardIs(u"second line"_qs));
    QTest::keyClick(m_window.get(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(m_window.get(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(clipboardIs(u"first line\nsecond line\nthird"_qs));
    QTest::keyClick(m_window.get(), Qt::Key_Escape);
    EXPECT_TRUE(m_view->selection().isEmpty());
}

TEST_F(PreviewWindow, FindsTextByKeys)
{
    QList<QStringList> pages(8);
    pages[0] = {u"a fish"_qs};
    pages[6] = {u"two fish"_qs};
    ASSERT_TRUE(show(file(pages)));
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    for (const char letter : {'f', 'i', 's', 'h'})
        QTest::keyClick(m_window.get(), letter);
    const TextSearch &search = *m_view->search();
    ASSERT_TRUE(waitUntil([&] { return search.count() == 2 && search.current() == 1; }));
    QTest::keyClick(m_window.get(), Qt::Key_Return);
    EXPECT_EQ(search.current(), 2);
    EXPECT_TRUE(waitUntil([this] { return m_view->currentPageIndex() == 6; }));
    QTest::keyClick(m_window.get(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(search.current(), 1);
    EXPECT_TRUE(waitUntil([this] { return m_view->currentPageIndex() == 0; }));
    QTest::keyClick(m_window.get(), Qt::Key_Escape);
    EXPECT_EQ(search.count(), 0);
    EXPECT_TRUE(m_view->hasActiveFocus());
}

TEST_F(PreviewWindow, TheBoxTellsOfTheShownDocumentOnly)
{
    const QUrl url = file(QList<QStringList>(5));
    EXPECT_EQ(m_box->currentViewport(url), EditorViewport());
    ASSERT_TRUE(show(url));
    m_view->zoomAbout(3, {0, 0});
    m_view->scrollToShare({0, 0.5});
    const EditorViewport viewport = m_box->currentViewport(url);
    EXPECT_EQ(viewport.pageIndex, 2);
    EXPECT_NEAR(viewport.zoom, 3, 1e-9);
    EXPECT_EQ(m_box->currentViewport(QUrl::fromLocalFile(u"/b.pdf"_qs)), EditorViewport());
    m_view->zoomAbout(0.1, {0, 0});
    EXPECT_EQ(m_box->currentViewport(url).zoom, 1);

    // A document on its way counts no more than none.
    m_view->open(url);
    EXPECT_EQ(m_box->currentViewport(url), EditorViewport());
    m_window.reset();
    PDFViewBox lonely;
    EXPECT_EQ(lonely.currentViewport(url), EditorViewport());
}

TEST_F(PreviewWindow, TellsAScreenReaderWhatItIs)
{
    ASSERT_TRUE(show(file({{}, {}}, u"Invoice.pdf"_qs)));
    QAccessibleInterface *const view = QAccessible::queryAccessibleInterface(m_view);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->role(), QAccessible::Document);
    EXPECT_EQ(view->text(QAccessible::Name), u"Invoice.pdf"_qs);
    EXPECT_EQ(view->text(QAccessible::Description), u"Page 1 of 2"_qs);
}

} // namespace
} // namespace velmor
