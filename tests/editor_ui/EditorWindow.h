#pragma once

#include "controls/Motion.h"
#include "editor/PageEditor.h"
#include "pipeline/RawStore.h"
#include "tests/model/AppModelFixture.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace velmor {

/// A window that is filled by the editor's screen, and scans for it.
class EditorWindow : public AppModelFixture {
protected:
    EditorWindow()
    {
        QDir().mkpath(scansPath());
        m_engine.addImportPath(QStringLiteral(":/qt/qml"));
        QObject::connect(&m_engine, &QQmlEngine::warnings, [](const QList<QQmlError> &errors) {
            for (const QQmlError &error : errors)
                ADD_FAILURE() << error.toString().toStdString();
        });
    }

    /// A page whose pixels all have colours of their own, none of them red.
    static QImage colorfulPage()
    {
        QImage image(200, 250, QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, qRgb(x, y, 128));
        }
        return image;
    }

    /// A scan with these raw pages; the pages of the PDF are as many.
    QUrl scan(const QList<QImage> &rawPages)
    {
        const QUrl url = QUrl::fromLocalFile(scansPath() + QStringLiteral("/a.pdf"));
        EXPECT_TRUE(model->write(documentOf(QList<int>(rawPages.size(), 125)), url));
        QStringList paths;
        for (const QImage &image : rawPages) {
            paths.append(folder.filePath(QStringLiteral("raw %1.png").arg(paths.size())));
            EXPECT_TRUE(image.save(paths.last()));
        }
        RawStore::adopt(paths, url);
        return url;
    }

    /// Shows the first page of a scan and waits for it.
    void open(EditorMode mode, const QList<QImage> &rawPages = {colorfulPage()})
    {
        begin(scan(rawPages), mode);
        ASSERT_TRUE(waitUntil([this] { return editor->hasImage(); }));
    }

    /// The same without waiting for the page.
    void begin(const QUrl &url, EditorMode mode)
    {
        QQmlComponent component(&m_engine);
        component.setData(
            "import QtQuick; import QtQuick.Window; import Velmor.Editor\n"
            "Window { width: 720; height: 560; visible: true\n"
            "PageEditorView { objectName: 'view'; anchors.fill: parent; focus: true } }",
            QUrl(QStringLiteral("qrc:/Editor.qml")));
        window.reset(qobject_cast<QQuickWindow *>(component.create()));
        ASSERT_TRUE(window) << component.errorString().toStdString();
        Motion::of(m_engine)->setReduced(true);
        editor = window->findChild<PageEditor *>();
        editor->setModel(model.get());
        QObject::connect(editor, &PageEditor::done, [this](bool changed) { ends.append(changed); });
        window->requestActivate();
        // The view has its size by then, as it has in the drawer.
        ASSERT_TRUE(
            waitUntil([this] { return window->isActive() && !editor->viewSize().isEmpty(); }));
        editor->open(url, mode);
        area = item("area");
        area->forceActiveFocus();
    }

    QQuickItem *item(const char *name) const
    {
        auto *const found = window->findChild<QQuickItem *>(QString::fromUtf8(name));
        EXPECT_TRUE(found) << name;
        return found;
    }

    /// A place of the page, as fractions of it, in the window.
    QPoint onPage(double x, double y) const
    {
        return area->mapToScene(denorm({x, y}, editor->imageRect())).toPoint();
    }
    static QPoint middleOf(const QQuickItem *shown)
    {
        return shown->mapToScene(shown->boundingRect().center()).toPoint();
    }

    void click(QPoint at) { QTest::mouseClick(window.get(), Qt::LeftButton, {}, at); }
    void click(const char *button)
    {
        window->grabWindow(); // which lays out what has changed
        click(middleOf(item(button)));
    }
    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(window.get(), Qt::LeftButton, {}, from);
        QTest::mouseMove(window.get(), (from + to) / 2);
        QTest::mouseMove(window.get(), to);
        QTest::mouseRelease(window.get(), Qt::LeftButton, {}, to);
    }
    void clickBox()
    {
        for (const auto &[x, y] : {
                 std::pair(0.2, 0.2), {0.8, 0.8},
                   {0.8, 0.2},
                   {0.2, 0.8}
        })
            click(onPage(x, y));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window.get(), key, modifiers);
    }

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> window;
    PageEditor *editor = nullptr;
    QQuickItem *area = nullptr;
    QList<bool> ends; ///< What each `done` of the pass said.
};

} // namespace velmor
