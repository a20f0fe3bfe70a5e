#include "browser/PDFThumbnail.h"
#include "browser/ScansBrowser.h"
#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/pipeline/TestPages.h"

#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>

#include <algorithm>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void addCells(QQuickItem &item, QList<PDFThumbnail *> &cells)
{
    if (auto *cell = qobject_cast<PDFThumbnail *>(&item); cell && cell->isThere())
        cells.append(cell);
    for (QQuickItem *child : item.childItems())
        addCells(*child, cells);
}

/// The whole screen over three scans, in a window.
class ScansGridTest : public testing::Test {
protected:
    ScansGridTest()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
        ScanSettings settings = model.settings();
        settings.outputFolder = QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("scans")));
        settings.ocr = false;
        model.setSettings(settings);
        QDir().mkpath(settings.outputFolder.toLocalFile());
        for (const char *name : {"c.pdf", "b.pdf", "a.pdf"})
            scan(QLatin1StringView(name));
        browser.setModel(&model);

        m_engine.addImportPath(QStringLiteral(":/qt/qml"));
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport Velmor.Browser\n"
                          "FocusScope { required property ScansBrowser browser; focus: true;"
                          " ScansBrowserView { anchors.fill: parent; browser: parent.browser; "
                          " editor: Component { FocusScope {} } } }",
                          {});
        m_screen.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties({
            {QStringLiteral("browser"), QVariant::fromValue(&browser)}
        })));
        EXPECT_TRUE(m_screen) << component.errorString().toStdString();
        window.resize(900, 580);
        m_screen->setParentItem(window.contentItem());
        m_screen->setSize(QSizeF(900, 580));
        window.show();
        window.requestActivate();
        EXPECT_TRUE(waitUntil([this] { return window.isActive() && cells().size() == 3; }));
    }

    QUrl scan(const QString &name)
    {
        const QDir folder(model.settings().outputFolder.toLocalFile());
        const QUrl url = QUrl::fromLocalFile(folder.filePath(name));
        EXPECT_TRUE(model.write(documentOf({120}), url));
        return url;
    }

    /// Those on screen, in the order of their places.
    QList<PDFThumbnail *> cells()
    {
        QList<PDFThumbnail *> cells;
        addCells(*window.contentItem(), cells);
        std::ranges::sort(cells, {},
                          [](const PDFThumbnail *cell) { return cell->property("place").toInt(); });
        return cells;
    }
    QPoint middleOf(int place)
    {
        const PDFThumbnail *cell = cells().at(place);
        return cell->mapToScene(QPointF(cell->width() / 2, cell->height() / 2)).toPoint();
    }
    void click(int place, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(&window, button, {}, middleOf(place));
    }
    bool isOpen(const char *popup) { return is(popup, "opened"); }
    /// Also once the last animation is over.
    bool isShown(const char *popup) { return is(popup, "visible"); }

    AppModel model;
    ScansBrowser browser;
    QQuickWindow window;

private:
    bool is(const char *popup, const char *state)
    {
        const QObject *found = m_screen->findChild<QObject *>(QLatin1StringView(popup));
        return found && found->property(state).toBool();
    }

    QTemporaryDir m_folder;
    QQmlEngine m_engine{};

protected:
    std::unique_ptr<QQuickItem> m_screen;
};

TEST_F(ScansGridTest, ThePointerPreviewsAndMarksAndKeysGoOnFromThere)
{
    const QList<QUrl> urls{browser.urlAt(0), browser.urlAt(1), browser.urlAt(2)};
    QTest::mouseMove(&window, middleOf(1));
    EXPECT_TRUE(waitUntil([&] { return browser.hovered() == urls[1]; }));
    EXPECT_EQ(browser.previewURL(), urls[1]);
    click(1);
    EXPECT_THAT(browser.selection(), ElementsAre(urls[1]));
    QTest::keyClick(&window, Qt::Key_Left);
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_THAT(browser.selection(), ElementsAre(urls[0]));
    // A new scan comes in front: the keyboard stays with its own.
    const QUrl fresh = scan(QStringLiteral("new.pdf"));
    model.loadResults();
    ASSERT_EQ(browser.urlAt(0), fresh);
    browser.toggle(urls[2], Qt::NoModifier);
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_THAT(browser.selection(), ElementsAre(urls[0]));
}

TEST_F(ScansGridTest, NoToolLiesOverAnotherHoweverNarrowTheScreen)
{
    model.setMagicPreset(MagicSettings());
    ASSERT_TRUE(model.writeWithBackup(documentOf({130}), browser.urlAt(0)));
    ASSERT_TRUE(browser.canUndo());
    const auto places = [this] {
        QList<QRectF> found;
        for (const char *name :
             {"rotate", "crop", "magic", "repeat", "merge", "split", "undo", "delete"}) {
            const auto *tool = m_screen->findChild<QQuickItem *>(QLatin1StringView(name) +
                                                                 QLatin1StringView("Tool"));
            if (tool && tool->isVisible())
                found.append(tool->mapRectToScene(tool->boundingRect()));
        }
        return found;
    };
    for (const qreal width : {m_screen->childItems().first()->implicitWidth(), 620.0}) {
        SCOPED_TRACE(width);
        m_screen->setWidth(width);
        // The bar follows with the next frame.
        EXPECT_TRUE(waitUntil([&] { return places().constLast().right() <= width; }));
        const QList<QRectF> tools = places();
        EXPECT_EQ(tools.size(), 8);
        for (qsizetype i = 1; i < tools.size(); ++i)
            EXPECT_LE(tools[i - 1].right(), tools[i].left()) << i;
    }
}

TEST_F(ScansGridTest, TheFocusComesBackFromTheEditor)
{
    const auto edit = [this] {
        QQuickItem *const before = window.activeFocusItem();
        browser.startCrop();
        EXPECT_TRUE(browser.isEditing());
        EXPECT_TRUE(waitUntil([&] { return window.activeFocusItem() != before; }));
        browser.finishEditing(false);
    };
    edit();
    click(1);
    QQuickItem *const grid = window.activeFocusItem();
    const auto isInGrid = [&] {
        return window.activeFocusItem() == grid;
    };
    edit();
    EXPECT_TRUE(waitUntil(isInGrid));
    for (int steps = 0; steps < 3 && isInGrid(); ++steps)
        QTest::keyClick(&window, Qt::Key_Tab);
    QQuickItem *const other = window.activeFocusItem();
    ASSERT_NE(other, grid);
    edit();
    EXPECT_TRUE(waitUntil([&] { return window.activeFocusItem() == other; }));
}

TEST_F(ScansGridTest, AVanishedFilesCellGoesAndTheSliderDrawsNothingAgain)
{
    const auto drawn = [this] {
        return std::ranges::all_of(cells(), [](const PDFThumbnail *c) { return c->hasImage(); });
    };
    EXPECT_TRUE(waitUntil(drawn));
    const auto *store = m_screen->findChild<ThumbnailStore *>();
    ASSERT_TRUE(store);
    const int asked = store->asked();
    for (const qreal size : {90, 260, 150}) {
        browser.setThumbSize(size);
        EXPECT_TRUE(waitUntil(
            [&] { return cells().size() == 3 && drawn() && cells().first()->width() == size; }));
    }
    EXPECT_EQ(store->asked(), asked);
    QFile::remove(browser.urlAt(1).toLocalFile());
    EXPECT_TRUE(waitUntil([this] { return cells().size() == 2; }));
}

TEST_F(ScansGridTest, TheMenuIsForTheMarkedScansOrMarksItsOwn)
{
    const QList<QUrl> urls{browser.urlAt(0), browser.urlAt(1), browser.urlAt(2)};
    click(0);
    QTest::keyClick(&window, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(waitUntil([this] { return isOpen("scanMenu"); }));
    QTest::keyClick(&window, Qt::Key_Backspace);
    QTest::keyClick(&window, Qt::Key_R);
    EXPECT_EQ(model.results().size(), 3) << "keys are the menu's";
    EXPECT_EQ(browser.rev(urls[0]), 0);
    const auto leave = [this] {
        EXPECT_TRUE(waitUntil([this] { return isOpen("scanMenu"); }));
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(waitUntil([this] { return !isShown("scanMenu"); }));
    };
    leave();
    QTest::keyClick(&window, Qt::Key_Menu);
    leave();

    browser.toggle(urls[1], Qt::ControlModifier);
    click(1, Qt::RightButton);
    EXPECT_THAT(browser.selection(), ElementsAre(urls[0], urls[1]));
    leave();
    click(2, Qt::RightButton);
    EXPECT_TRUE(waitUntil([this] { return isOpen("scanMenu"); }));
    EXPECT_THAT(browser.selection(), ElementsAre(urls[2]));
    for (int entry = 1; entry <= 5; ++entry)
        QTest::keyClick(&window, Qt::Key_Down);
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_TRUE(waitUntil([this] { return cells().size() == 2; })) << "deleted";
}

TEST_F(ScansGridTest, AScanIsRenamedInItsPlace)
{
    click(1);
    QTest::keyClick(&window, Qt::Key_F2);
    EXPECT_TRUE(waitUntil([this] { return isOpen("renamePopover"); }));
    const auto type = [this](QByteArray keys) {
        for (const char key : keys)
            QTest::keyClick(&window, key);
        QTest::keyClick(&window, Qt::Key_Return);
    };
    type("a");
    EXPECT_TRUE(isOpen("renamePopover")) << "there is one of this name";
    type("mr s");
    EXPECT_TRUE(waitUntil([this] { return !isShown("renamePopover"); }));
    const QUrl renamed = browser.urlAt(1);
    EXPECT_EQ(renamed.fileName(), QStringLiteral("amr s.pdf"));
    EXPECT_THAT(browser.selection(), ElementsAre(renamed));
    EXPECT_EQ(browser.note(), QStringLiteral("Renamed"));
}

TEST_F(ScansGridTest, DroppedFilesAreImportedAndMarked)
{
    QTemporaryDir elsewhere;
    const QString path = elsewhere.filePath(QStringLiteral("letter.pdf"));
    writeFile(path, documentOf({100}).bytes().value());
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({400, 300}, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, {});
    enter.setDropAction(Qt::MoveAction);
    QCoreApplication::sendEvent(&window, &enter);
    QDropEvent drop({400, 300}, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "the user's file isn't moved";
    EXPECT_TRUE(waitUntil([this] { return model.results().size() == 4; }));
    EXPECT_THAT(browser.selection(), ElementsAre(browser.urlAt(0)));
    EXPECT_EQ(browser.note(), QStringLiteral("Imported 1 scan"));
    EXPECT_TRUE(QFileInfo::exists(path));
}

} // namespace
} // namespace velmor
