#include "browser/ScansBrowser.h"

#include "pipeline/RawStore.h"
#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/pipeline/TestPages.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <cstdio>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScansBrowserTest : public testing::Test {
protected:
    ScansBrowserTest()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                           m_folder.filePath(QStringLiteral("config")));
        model = std::make_unique<AppModel>();
        ScanSettings settings = model->settings();
        settings.outputFolder = QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("scans")));
        settings.ocr = false;
        model->setSettings(settings);
        QDir().mkpath(settings.outputFolder.toLocalFile());
        browser.setModel(model.get());
    }

    /// A scan in the output folder that the model knows of.
    QUrl scan(const QString &name, const QList<int> &heights = {100})
    {
        const QDir folder(model->settings().outputFolder.toLocalFile());
        const QUrl url = QUrl::fromLocalFile(folder.filePath(name));
        EXPECT_TRUE(model->write(documentOf(heights), url));
        model->loadResults();
        return url;
    }

    void mark(const QList<QUrl> &files)
    {
        browser.toggle(files.first(), Qt::NoModifier);
        for (const QUrl &file : files.mid(1))
            browser.toggle(file, Qt::ControlModifier);
    }

    QString note() const { return browser.note().value_or(QStringLiteral("none")); }

    std::unique_ptr<AppModel> model;
    ScansBrowser browser;

private:
    QTemporaryDir m_folder;
};

TEST_F(ScansBrowserTest, InAnEmptyFolderEachOperationSaysItsOwn)
{
    model->setMagicPreset(MagicSettings{0.1, 0.9, 1});
    const struct {
        void (ScansBrowser::*operation)();
        const char *note;
    } cases[] = {
        {&ScansBrowser::rotate,           "Rotated"                         },
        {&ScansBrowser::deleteSelected,   "Deleted"                         },
        {&ScansBrowser::split,            "Select a multi-page PDF to split"},
        {&ScansBrowser::startCrop,        "No scan to edit"                 },
        {&ScansBrowser::startMagic,       "No scan to edit"                 },
        {&ScansBrowser::applyMagicPreset, "Select scans first"              },
        {&ScansBrowser::merge,            "Select 2+ scans to merge"        },
    };
    for (const auto &c : cases) {
        (browser.*c.operation)();
        EXPECT_EQ(note(), QLatin1StringView(c.note));
    }
    EXPECT_FALSE(browser.isEditing());
    browser.undoEdit();
    EXPECT_EQ(note(), QStringLiteral("Select 2+ scans to merge")) << "undo says nothing";
}

TEST_F(ScansBrowserTest, ClicksMarkAndThePointerPreviews)
{
    const QUrl a = scan(QStringLiteral("a.pdf"));
    const QUrl b = scan(QStringLiteral("b.pdf"));
    EXPECT_EQ(browser.previewURL(), model->results().first().url);
    EXPECT_THAT(browser.targets(), ElementsAre(model->results().first().url));
    browser.toggle(a, Qt::NoModifier);
    browser.toggle(a, Qt::NoModifier);
    EXPECT_THAT(browser.selection(), ElementsAre(a)) << "a plain click empties nothing";
    browser.toggle(b, Qt::ShiftModifier);
    EXPECT_THAT(browser.selection(), ElementsAre(a, b));
    browser.toggle(a, Qt::ControlModifier);
    EXPECT_THAT(browser.selection(), ElementsAre(b));
    browser.enter(a);
    EXPECT_EQ(browser.previewURL(), a);
    EXPECT_THAT(browser.targets(), ElementsAre(b));
    browser.enter(b);
    browser.leave(a); // comes late
    EXPECT_EQ(browser.hovered(), b);
    browser.leave(b);
    EXPECT_EQ(browser.hovered(), std::nullopt);
}

TEST_F(ScansBrowserTest, OperationsActOnTheMarkedScansAndCountTheirRevisions)
{
    const QUrl a = scan(QStringLiteral("a.pdf"), {100, 200});
    const QUrl b = scan(QStringLiteral("b.pdf"));
    browser.toggle(a, Qt::NoModifier);
    browser.enter(b);
    browser.handleKey(QStringLiteral("r"));
    EXPECT_EQ(note(), QStringLiteral("Rotated"));
    EXPECT_EQ(browser.rev(a), 1);
    EXPECT_EQ(browser.rev(b), 0);
    // Undo is for the one in the preview.
    EXPECT_FALSE(browser.canUndo());
    browser.handleKey(QStringLiteral("undo"));
    EXPECT_EQ(note(), QStringLiteral("Rotated"));
    browser.leave(b);
    EXPECT_TRUE(browser.canUndo());
    browser.handleKey(QStringLiteral("undo"));
    EXPECT_EQ(note(), QStringLiteral("Undid last edit"));
    EXPECT_EQ(browser.rev(a), 2);

    browser.enter(b);
    browser.handleKey(QStringLiteral("s"));
    EXPECT_EQ(note(), QStringLiteral("Split into pages"));
    EXPECT_EQ(browser.selection().size(), 2);
    EXPECT_EQ(browser.hovered(), std::nullopt);
    EXPECT_EQ(model->results().size(), 4);
    browser.handleKey(QStringLiteral("m"));
    EXPECT_EQ(note(), QStringLiteral("Merged 2 scans"));
    ASSERT_EQ(browser.selection().size(), 1);
    EXPECT_EQ(model->results().size(), 5);
    browser.handleKey(QStringLiteral("delete"));
    EXPECT_EQ(note(), QStringLiteral("Deleted"));
    EXPECT_THAT(browser.selection(), IsEmpty());
    EXPECT_EQ(model->results().size(), 4);
}

TEST_F(ScansBrowserTest, TheListFollowsTheFolder)
{
    const QUrl a = scan(QStringLiteral("a.pdf"));
    EXPECT_EQ(browser.rev(a), 0);
    const QString folder = QFileInfo(a.toLocalFile()).path();
    const auto replace = [&](const QString &name) {
        const QString elsewhere = folder + QStringLiteral("/.part");
        writeFile(elsewhere, documentOf({500, 600}).bytes().value());
        EXPECT_EQ(rename(qPrintable(elsewhere), qPrintable(folder + u'/' + name)), 0);
    };
    replace(QStringLiteral("b.pdf"));
    EXPECT_TRUE(waitUntil([&] { return model->results().size() == 2; }));
    replace(QStringLiteral("a.pdf"));
    EXPECT_TRUE(waitUntil([&] { return browser.rev(a) == 1; }));
    QFile::remove(a.toLocalFile());
    EXPECT_TRUE(waitUntil([&] { return model->results().size() == 1; }));
    replace(QStringLiteral("a.pdf"));
    EXPECT_TRUE(waitUntil([&] { return browser.rev(a) == 2; })) << "another one of its name";
    // The folder goes and comes back.
    EXPECT_TRUE(QDir(folder).removeRecursively());
    EXPECT_TRUE(waitUntil([&] { return model->results().isEmpty(); }));
    EXPECT_TRUE(QDir().mkpath(folder));
    replace(QStringLiteral("c.pdf"));
    EXPECT_TRUE(waitUntil([&] { return model->results().size() == 1; }));
}

TEST_F(ScansBrowserTest, LevelsAreRepeatedOnAllTargets)
{
    const QUrl a = scan(QStringLiteral("a.pdf"));
    const QUrl b = scan(QStringLiteral("b.pdf"));
    const QUrl gone = scan(QStringLiteral("gone.pdf"));
    browser.applyMagicPreset();
    EXPECT_EQ(note(), QStringLiteral("none")) << "without levels it does nothing";
    model->setMagicPreset(MagicSettings{0.1, 0.9, 1});
    const auto repeat = [this](const QList<QUrl> &files) {
        mark(files);
        browser.applyMagicPreset();
        const QString before = note();
        EXPECT_TRUE(waitUntil([&] { return note() != before; }));
        return before + u'|' + note();
    };
    EXPECT_EQ(repeat({a}), QStringLiteral("Applying magic to 1 scan…|Magic applied to 1 scan"));
    EXPECT_EQ(repeat({a, b}),
              QStringLiteral("Applying magic to 2 scans…|Magic applied to 2 scans"));
    QFile::remove(gone.toLocalFile());
    EXPECT_EQ(repeat({gone, b}),
              QStringLiteral("Applying magic to 2 scans…|Some scans couldn't be written"));
    EXPECT_EQ(browser.rev(a), 2);
    EXPECT_EQ(browser.rev(b), 2);
    EXPECT_EQ(browser.rev(gone), 1);
    browser.enter(b);
    EXPECT_TRUE(browser.canUndo());
    // What is deleted while its levels are worked on stays deleted.
    mark({a});
    browser.applyMagicPreset();
    browser.deleteSelected();
    EXPECT_TRUE(
        waitUntil([&] { return note() == QStringLiteral("Some scans couldn't be written"); }));
    EXPECT_FALSE(QFileInfo::exists(a.toLocalFile()));
    // So does what is edited then.
    mark({b});
    browser.applyMagicPreset();
    EXPECT_TRUE(model->write(documentOf({321}), b));
    const QString before = note();
    EXPECT_TRUE(waitUntil([&] { return note() != before; }));
    EXPECT_EQ(note(), QStringLiteral("Some scans couldn't be written"));
    EXPECT_THAT(heightsOf(*PdfDocument::open(b)), ElementsAre(321));
}

TEST_F(ScansBrowserTest, TheEditorTakesThePlaceOfThePreviewUntilItIsDone)
{
    const QUrl a = scan(QStringLiteral("a.pdf"));
    const QUrl b = scan(QStringLiteral("b.pdf"));
    browser.toggle(b, Qt::NoModifier);
    browser.enter(a);
    browser.handleKey(QStringLiteral("w"));
    EXPECT_EQ(browser.editorURL(), a);
    EXPECT_EQ(browser.editorMode(), EditorMode::magic);
    EXPECT_EQ(browser.editorViewport(), EditorViewport()) << "without a preview";
    EXPECT_EQ(browser.editRequest(), (EditRequest{a, EditorMode::magic, {}}));
    EXPECT_EQ(browser.editorIdentity(), a.path() + QStringLiteral("#magic"));
    EXPECT_THAT(browser.selection(), ElementsAre(a));
    EXPECT_EQ(browser.hovered(), std::nullopt);
    // Neither pointer nor keys reach what lies beneath.
    browser.enter(b);
    browser.toggle(b, Qt::NoModifier);
    browser.handleKey(QStringLiteral("delete"));
    EXPECT_THAT(browser.targets(), ElementsAre(a));
    EXPECT_EQ(model->results().size(), 2);
    browser.finishEditing(false);
    EXPECT_FALSE(browser.isEditing());
    EXPECT_EQ(browser.editorIdentity(), QString());
    EXPECT_EQ(browser.rev(a), 0);
    browser.startCrop();
    EXPECT_EQ(browser.editorIdentity(), a.path() + QStringLiteral("#crop"));
    browser.finishEditing(true);
    EXPECT_EQ(browser.rev(a), 1);
    EXPECT_EQ(note(), QStringLiteral("none"));
}

} // namespace
} // namespace velmor
