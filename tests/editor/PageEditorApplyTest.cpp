#include "tests/editor/HeldPool.h"
#include "tests/editor/PageEditorFixture.h"
#include "tests/model/DeniedFolder.h"
#include "tests/model/SmallDisk.h"

#include <QFile>
#include <QThreadPool>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto crop = EditorMode::crop;
constexpr auto magic = EditorMode::magic;

class PageEditorApplyTest : public PageEditorFixture {
protected:
    /// Opens a scan of five pages at the third, ready to be applied.
    void prepare(EditorMode mode)
    {
        url = scan({100, 200, 300, 400, 500});
        before = readFile(url.toLocalFile());
        QImage grey(200, 600, QImage::Format_Grayscale8);
        grey.fill(100);
        giveRawPages(url, QList<QImage>(5, grey));
        open(url, mode, {2, 1, std::nullopt});
        if (mode == magic)
            editor->setBlackLum(0.5);
        else
            clickBox(0.1, 0.1, 0.6, 0.3);
    }

    QList<int> heights() const { return heightsOf(PdfDocument::open(url).value()); }

    QUrl url;
    QByteArray before;
};

TEST_F(PageEditorApplyTest, CropPutsAPageForEachBoxInThePagesPlace)
{
    prepare(crop);
    clickBox(0, 0.5, 1, 1);
    click(at(0.5, 0.45));
    {
        const HeldPool held;
        EXPECT_TRUE(editor->handleKey(QStringLiteral("return")));
        EXPECT_TRUE(editor->busy());
        EXPECT_FALSE(editor->canApply());
        editor->applyCrop();
    }
    ASSERT_TRUE(waitForDone());
    EXPECT_THAT(heights(), ElementsAre(100, 200, 60, 150, 400, 500));
    EXPECT_EQ(qRound(PdfDocument::open(url)->page(2)->mediaBox().width()), 50);
    EXPECT_EQ(toast(), u"Cropped into 2 pages");
    EXPECT_EQ(RawStore::pageCount(url), 0);
    EXPECT_TRUE(model->undoEdit(url));
    EXPECT_EQ(readFile(url.toLocalFile()), before);
    EXPECT_THAT(ends, ElementsAre(true));
}

TEST_F(PageEditorApplyTest, CropOfNothingUsableEndsWithoutAWord)
{
    url = scan({200});
    before = readFile(url.toLocalFile());
    open(url, crop);
    for (int i = 0; i < 4; ++i)
        click(at(0.5, 0.5));
    editor->applyCrop();
    ASSERT_TRUE(waitForDone());
    EXPECT_THAT(ends, ElementsAre(false));
    EXPECT_EQ(toast(), QString());
    EXPECT_EQ(readFile(url.toLocalFile()), before);
}

TEST_F(PageEditorApplyTest, MagicRebuildsThePageAndKeepsTheRawPages)
{
    prepare(magic);
    editor->setSoftness(0.75);
    const MagicSettings levels = editor->levels().settings();
    EXPECT_TRUE(editor->handleKey(QStringLiteral("return")));
    EXPECT_EQ(model->magicPreset(), levels) << "whatever becomes of the page";
    editor->resetMagic();
    ASSERT_TRUE(waitForDone());
    EXPECT_THAT(ends, ElementsAre(true));
    EXPECT_THAT(heights(), ElementsAre(100, 200, 300, 400, 500));
    EXPECT_EQ(toast(),
              u"Magic applied to page 3 — paintbrush copies it to other scans, Ctrl+Z undoes");
    EXPECT_EQ(RawStore::pageCount(url), 5);
    EXPECT_TRUE(model->undoableFiles().contains(url));
    const auto page = PageRaster::render(*PdfDocument::open(url)->page(2), PageRaster::Dpi{72});
    EXPECT_EQ(page.value().pixelColor(50, 150), QColor(Qt::black)) << "of the levels at the start";
}

TEST_F(PageEditorApplyTest, LeavingMeanwhileLeavesEverythingAsItWas)
{
    for (const EditorMode mode : {crop, magic}) {
        url = scan({200});
        before = readFile(url.toLocalFile());
        giveRawPages(url, {noise({300, 600})});
        open(url, mode);
        editor->setBlackLum(0.5);
        editor->addBox();
        {
            const HeldPool held;
            editor->apply();
            ASSERT_TRUE(editor->busy());
            editor->cancel();
            // The work comes to its end with and without the one who began it.
            if (mode == magic)
                editor.reset();
        }
        for (int step = 0; step < 10; ++step) {
            QCoreApplication::processEvents();
            QThreadPool::globalInstance()->waitForDone();
        }
        EXPECT_THAT(ends, ElementsAre(false));
        EXPECT_EQ(readFile(url.toLocalFile()), before);
        EXPECT_EQ(RawStore::pageCount(url), 1);
        EXPECT_EQ(toast(), QString());
        EXPECT_THAT(model->undoableFiles(), IsEmpty());
    }
}

TEST_F(PageEditorApplyTest, APageChangeMeanwhileDoesNotDisturb)
{
    prepare(magic);
    {
        const HeldPool held;
        editor->applyMagic();
        editor->setPageIndex(0);
        EXPECT_FALSE(editor->hasImage());
    }
    ASSERT_TRUE(waitForDone());
    EXPECT_THAT(ends, ElementsAre(true));
    EXPECT_EQ(toast().left(23), u"Magic applied to page 3");
}

TEST_F(PageEditorApplyTest, AFileThatSomebodyElseChangedIsLeftAlone)
{
    const struct {
        EditorMode mode;
        bool isRemoved, isMeanwhile; ///< While the apply is under way, else before.
        const char *toast;
    } cases[] = {
        {crop,  false, false, "Not applied — the file has been changed meanwhile"},
        {crop,  false, true,  "Not applied — the file has been changed meanwhile"},
        {magic, true,  false, "Not applied — the file isn't there any more"      },
    };
    for (const auto &c : cases) {
        prepare(c.mode);
        QFile file(url.toLocalFile());
        const auto change = [&] {
            c.isRemoved ? (void)file.remove() : (void)writeFile(file.fileName(), "other content");
        };
        {
            const HeldPool held;
            if (!c.isMeanwhile)
                change();
            editor->apply();
            if (c.isMeanwhile)
                change();
        }
        ASSERT_TRUE(waitForDone());
        EXPECT_EQ(ends.takeLast(), false);
        EXPECT_EQ(toast(), QString::fromUtf8(c.toast));
        EXPECT_EQ(file.exists(), !c.isRemoved);
        EXPECT_EQ(RawStore::pageCount(url), 5);
        const bool isKept = c.isRemoved || readFile(file.fileName()) == "other content";
        EXPECT_TRUE(isKept);
    }
}

TEST_F(PageEditorApplyTest, AWriteThatFailsKeepsTheScanAndItsRawPages)
{
    prepare(crop);
    {
        const SmallDisk disk(rlim_t(before.size() / 2));
        editor->applyCrop();
        ASSERT_TRUE(waitForDone());
    }
    EXPECT_THAT(ends, ElementsAre(false));
    EXPECT_EQ(toast(), u"Couldn't write — folder isn't writable");
    EXPECT_EQ(readFile(url.toLocalFile()), before);
    EXPECT_EQ(RawStore::pageCount(url), 5);
}

TEST_F(PageEditorApplyTest, AFolderThatMayNotBeWrittenKeepsTheScan)
{
    for (const EditorMode mode : {crop, magic}) {
        prepare(mode);
        {
            const DeniedFolder denied(scansPath());
            editor->apply();
            ASSERT_TRUE(waitForDone());
        }
        EXPECT_THAT(ends, ElementsAre(false));
        EXPECT_EQ(toast(), u"Couldn't write — folder isn't writable");
        EXPECT_EQ(readFile(url.toLocalFile()), before);
        EXPECT_EQ(RawStore::pageCount(url), 5);
    }
}

TEST_F(PageEditorApplyTest, AnOutlineFoundTooLateIsNotProposedForAnotherPage)
{
    QImage paper(600, 800, QImage::Format_Grayscale8);
    paper.fill(60);
    for (int y = 200; y < 600; ++y)
        std::fill_n(paper.scanLine(y) + 150, 300, uchar(255));
    url = scan({400, 400});
    giveRawPages(url, {paper, paper});
    begin(url, crop);
    std::optional<HeldPool> held;
    QObject::connect(editor.get(), &PageEditor::imageChanged, [&] {
        if (editor->hasImage())
            held.emplace();
    });
    bool isProposed = false;
    QObject::connect(editor.get(), &PageEditor::boxesChanged,
                     [&] { isProposed = isProposed || editor->hasProposal(); });
    ASSERT_TRUE(waitUntil([&] { return held.has_value(); }));
    editor->addBox();
    editor->applyCrop();
    editor->setPageIndex(1);
    ASSERT_TRUE(editor->busy());
    held.reset();
    ASSERT_TRUE(waitForDone());
    EXPECT_FALSE(isProposed);
}

} // namespace
} // namespace velmor
