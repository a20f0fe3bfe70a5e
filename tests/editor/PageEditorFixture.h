#pragma once

#include "editor/PageEditor.h"
#include "pipeline/RawStore.h"
#include "tests/model/AppModelFixture.h"

#include <QDir>
#include <QSignalSpy>

namespace velmor {

/// A model, and an editor for the scans that a test writes.
class PageEditorFixture : public AppModelFixture {
protected:
    PageEditorFixture() { QDir().mkpath(scansPath()); }

    QUrl saved(const PdfDocument &document)
    {
        const QUrl url = QUrl::fromLocalFile(scansPath() + QStringLiteral("/a.pdf"));
        EXPECT_TRUE(model->write(document, url));
        return url;
    }

    /// A scan of pages of this many points height, 100 wide, all of the same grey.
    QUrl scan(const QList<int> &heights) { return saved(documentOf(heights)); }

    /// A raw page for each of these, from the first on.
    void giveRawPages(const QUrl &url, const QList<QImage> &images)
    {
        QStringList paths;
        for (const QImage &image : images) {
            paths.append(folder.filePath(QStringLiteral("raw %1.png").arg(paths.size())));
            EXPECT_TRUE(image.save(paths.last()));
        }
        RawStore::adopt(paths, url);
    }

    /// Begins a pass with an editor of its own.
    void begin(const QUrl &url, EditorMode mode, const EditorViewport &viewport = {})
    {
        ends.clear();
        editor = std::make_unique<PageEditor>();
        QObject::connect(editor.get(), &PageEditor::done,
                         [this](bool changed) { ends.append(changed); });
        editor->setModel(model.get());
        editor->setViewSize(viewSize);
        editor->open(url, mode, viewport);
    }

    /// The same, and waits until the page is there, or won't come.
    void open(const QUrl &url, EditorMode mode, const EditorViewport &viewport = {})
    {
        begin(url, mode, viewport);
        waitForPage();
    }

    void waitForPage()
    {
        EXPECT_TRUE(waitUntil([this] { return editor->hasImage() || !editor->hint().isEmpty(); }));
    }

    bool waitForDone()
    {
        return waitUntil([this] { return !ends.isEmpty(); });
    }

    QPointF at(double x, double y) const { return denorm({x, y}, editor->imageRect()); }

    void click(QPointF place)
    {
        editor->dragChanged(place, place);
        editor->dragEnded(place);
    }

    /// Clicks the corners of an upright box.
    void clickBox(double left, double top, double right, double bottom)
    {
        click(at(left, top));
        click(at(right, bottom));
        click(at(right, top));
        click(at(left, bottom));
    }

    QString toast() const { return model->toast().value_or(QString()); }

    QSizeF viewSize{600, 400};
    std::unique_ptr<PageEditor> editor;
    QList<bool> ends; ///< What each `done` of the pass said.
};

} // namespace velmor
