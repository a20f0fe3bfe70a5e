#include "tests/editor/PageEditorFixture.h"

#include <QPainter>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto crop = EditorMode::crop;
constexpr auto magic = EditorMode::magic;

class PageEditorTest : public PageEditorFixture {};

QImage plain(QSize size, int grey)
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(grey);
    return image;
}

TEST_F(PageEditorTest, OpensTheNearestPageThereIs)
{
    const QUrl url = scan({100, 200, 300});
    const struct {
        int wanted, opened;
        QString readout;
    } cases[] = {
        {-1, 0, QStringLiteral("1/3")},
        {1,  1, QStringLiteral("2/3")},
        {9,  2, QStringLiteral("3/3")},
    };
    for (const auto &c : cases) {
        open(url, crop, {c.wanted, 1, std::nullopt});
        EXPECT_EQ(editor->pageIndex(), c.opened);
        EXPECT_EQ(editor->pageReadout(), c.readout);
    }
}

TEST_F(PageEditorTest, OpensWhereTheUserWasLooking)
{
    open(scan({100, 100}), magic, {1, 4, QPointF(0.75, 0.5)});
    EXPECT_EQ(editor->zoom(), 4);
    EXPECT_EQ(editor->pan(), QPointF(-400, 0));
    editor->autoSet();
    editor->setPageIndex(0);
    EXPECT_FALSE(editor->hasImage());
    EXPECT_EQ(editor->zoom(), 1) << "another page is fitted";
    EXPECT_FALSE(editor->magicTouched()) << "nothing unapplied survives";
    waitForPage();
    editor->zoomIn();
    EXPECT_EQ(editor->zoomReadout(), u"140%");
}

TEST_F(PageEditorTest, AViewportWaitsUntilThereIsAView)
{
    viewSize = {0, 0};
    open(scan({100, 100}), magic, {0, 4, std::nullopt});
    EXPECT_EQ(editor->zoom(), 1);
    editor->setViewSize({600, 400});
    EXPECT_EQ(editor->zoom(), 1);
    editor->setPageIndex(1);
    waitForPage();
    EXPECT_EQ(editor->zoom(), 4);
}

TEST_F(PageEditorTest, ShowsTheRawPageWhereItIsValid)
{
    const struct {
        const char *what;
        int rotation;
        int rawPages;
        QSize shown;
    } cases[] = {
        {"upright",                   0,   2, {300, 500} },
        {"turned all around",         360, 2, {300, 500} },
        {"turned",                    90,  2, {1600, 800}},
        {"upside down",               180, 2, {800, 1600}},
        {"turned three quarters",     270, 2, {1600, 800}},
        {"once around and a quarter", 450, 2, {1600, 800}},
        {"a raw page is missing",     0,   1, {800, 1600}},
    };
    for (const auto &c : cases) {
        PdfDocument document;
        for (int i = 0; i < 2; ++i) {
            PdfPage page = plainPage({100, 200});
            page.setRotation(c.rotation);
            ASSERT_TRUE(document.insertPage(page, i));
        }
        const QUrl url = saved(document);
        giveRawPages(url, QList<QImage>(c.rawPages, plain({300, 500}, 70)));
        open(url, crop, {1, 1, std::nullopt});
        EXPECT_EQ(editor->baseImage().size(), c.shown) << c.what;
    }
}

TEST_F(PageEditorTest, ARawPageThatDoesNotDecodeGivesWayToThePdf)
{
    const QUrl url = scan({200});
    giveRawPages(url, {plain({300, 500}, 70)});
    writeFile(RawStore::pageURL(url, 0)->toLocalFile(), "no image");
    open(url, magic);
    EXPECT_EQ(editor->baseImage().size(), QSize(800, 1600));
    EXPECT_EQ(editor->rawHistogram().at(128 / 4), 800 * 1600);
}

TEST_F(PageEditorTest, KeepsThePreviewSmallWhateverThePageSize)
{
    const struct {
        QSizeF points;
        QSize pixels;
    } cases[] = {
        {{1, 1},         {8, 8}      },
        {{14400, 14400}, {1800, 1800}},
        {{14400, 1},     {1800, 1}   },
    };
    for (const auto &c : cases) {
        PdfDocument document;
        ASSERT_TRUE(document.insertPage(plainPage(c.points), 0));
        open(saved(document), crop);
        EXPECT_EQ(editor->baseImage().size(), c.pixels);
    }
    giveRawPages(scan({100}), {plain({4000, 1000}, 70)});
    open(scan({100}), crop);
    EXPECT_EQ(editor->baseImage().size(), QSize(1800, 450));
}

TEST_F(PageEditorTest, AFileThatDoesNotOpenCanStillBeLeft)
{
    const QString path = writeFile(scansPath() + QStringLiteral("/a.pdf"), "nothing");
    open(QUrl::fromLocalFile(path), crop);
    EXPECT_EQ(editor->hint(), u"This file can't be opened");
    EXPECT_EQ(editor->pageCount(), 0);
    EXPECT_FALSE(editor->handleKey(QStringLiteral("return")));
    editor->applyCrop();
    EXPECT_TRUE(editor->handleKey(QStringLiteral("escape")));
    editor->cancel();
    EXPECT_THAT(ends, ElementsAre(false)) << "it ends once";
}

TEST_F(PageEditorTest, ALateResultDoesNotShowOverANewerPage)
{
    QList<int> heights;
    for (int page = 0; page < 500; ++page)
        heights.append(100 + page);
    const QUrl url = scan(heights);
    begin(url, crop, {250, 1, std::nullopt});
    ASSERT_TRUE(waitUntil([this] { return editor->pageCount() == 500; }));
    QSignalSpy shown(editor.get(), &PageEditor::imageChanged);
    for (int page = 0; page < 20; ++page)
        editor->setPageIndex(page);
    editor->setPageIndex(499);
    waitForPage();
    EXPECT_EQ(editor->baseImage().size(), QSize(301, 1800)) << "100 by 599 points";
    EXPECT_THAT(shown, SizeIs(22)) << "each page left blank, and the last one shown";
}

TEST_F(PageEditorTest, KeysDoWhatTheStateAllows)
{
    const auto escape = QStringLiteral("escape"), undo = QStringLiteral("undo");
    const auto enter = QStringLiteral("return"), erase = QStringLiteral("delete");
    open(scan({100}), crop);
    EXPECT_FALSE(editor->handleKey(QStringLiteral("r")));
    EXPECT_TRUE(editor->handleKey(erase)) << "also with nothing to take back";
    click(at(0.5, 0.5));
    EXPECT_FALSE(editor->handleKey(enter)) << "an unfinished box isn't applied";
    EXPECT_TRUE(editor->handleKey(undo));
    clickBox(0.1, 0.1, 0.9, 0.9);
    click(at(0.5, 0.5));
    EXPECT_TRUE(editor->handleKey(escape));
    EXPECT_THAT(editor->pending(), IsEmpty());
    EXPECT_THAT(editor->boxes(), SizeIs(1));
    EXPECT_TRUE(editor->handleKey(escape));
    EXPECT_THAT(ends, ElementsAre(false));

    open(scan({100}), magic);
    EXPECT_FALSE(editor->handleKey(enter));
    EXPECT_FALSE(editor->handleKey(erase));
    for (const QString &key : {escape, undo}) {
        editor->autoSet();
        EXPECT_TRUE(editor->handleKey(key));
        EXPECT_EQ(editor->levels(), MagicLevels());
    }
    EXPECT_THAT(ends, IsEmpty());
    EXPECT_TRUE(editor->handleKey(escape));
    EXPECT_THAT(ends, ElementsAre(false));
}

TEST_F(PageEditorTest, ClicksMeasureThePageAsItWasBeforeTheLevels)
{
    QImage halves = plain({100, 100}, 240);
    for (int y = 0; y < 100; ++y)
        std::fill_n(halves.scanLine(y), 50, uchar(51));
    const QUrl url = scan({100});
    giveRawPages(url, {halves});
    open(url, magic);
    EXPECT_EQ(editor->displayImage(), editor->baseImage());
    editor->hover(at(0.25, 0.5));
    EXPECT_EQ(editor->loupeLabel(), u"20%");
    QSignalSpy told(editor.get(), &PageEditor::hoverChanged);
    editor->applyZoom(8, at(0, 0.5));
    EXPECT_THAT(told, SizeIs(1)) << "another pixel is under the pointer";
    editor->fit();
    editor->dragEnded(at(-0.1, 0.5));
    EXPECT_EQ(editor->clicksSoFar(), 0) << "released beside the page";
    editor->dragChanged(at(0.9, 0.5), at(0.25, 0.5));
    editor->dragEnded(at(0.25, 0.5));
    EXPECT_DOUBLE_EQ(editor->blackLum(), 0.2);
    EXPECT_EQ(editor->instruction(), u"Now click the white paper — or drag the sliders");
    click(at(0.75, 0.5));
    EXPECT_EQ(editor->levelsReadout(), u"20–94");
    EXPECT_EQ(editor->displayImage().pixelColor(10, 10), QColor(Qt::black));
    EXPECT_EQ(editor->displayImage().pixelColor(90, 10), QColor(Qt::white));
    EXPECT_EQ(editor->loupeLabel(), u"20%");
    const qint64 made = editor->displayImage().cacheKey();
    EXPECT_EQ(editor->displayImage().cacheKey(), made) << "made once for a change";
    editor->resetMagic();
    EXPECT_EQ(editor->displayImage(), editor->baseImage());
    editor->setBlackLum(0.5);
    EXPECT_EQ(editor->instruction(), u"Fine-tune with the sliders, then Apply");
}

TEST_F(PageEditorTest, ProposesTheOutlineOfThePaper)
{
    QImage paper = plain({600, 800}, 60);
    QPainter(&paper).fillRect(150, 200, 300, 400, Qt::white);
    const QUrl url = scan({400});
    giveRawPages(url, {paper});
    open(url, crop);
    EXPECT_FALSE(editor->canApply());
    ASSERT_TRUE(waitUntil([this] { return editor->hasProposal(); }));
    EXPECT_TRUE(editor->handleAreaKey(Qt::Key_Tab, 0));
    ASSERT_THAT(editor->boxes(), SizeIs(1));
    const QPointF corner = editor->boxes()[0].corners[2];
    EXPECT_NEAR(corner.x(), 0.75, 0.01);
    EXPECT_NEAR(corner.y(), 0.75, 0.01);
    EXPECT_FALSE(editor->hasProposal());
    EXPECT_EQ(editor->currentCornerName(), u"Box 1, top left corner");
}

TEST_F(PageEditorTest, ArrowKeysPanAZoomedPageWhereTheyMoveNoCorner)
{
    for (const EditorMode mode : {crop, magic}) {
        open(scan({100}), mode);
        EXPECT_FALSE(editor->handleAreaKey(Qt::Key_Right, 0)) << "all of it is in view";
        editor->applyZoom(4, QPointF(300, 200));
        EXPECT_TRUE(editor->handleAreaKey(Qt::Key_Right, 0));
        EXPECT_TRUE(editor->handleAreaKey(Qt::Key_Up, Qt::ShiftModifier));
        EXPECT_EQ(editor->pan(), QPointF(-20, 100));
    }
}

TEST_F(PageEditorTest, BoxesCanBeMadeByKeysAlone)
{
    open(scan({100}), crop);
    editor->applyZoom(4, at(0, 0));
    EXPECT_FALSE(editor->handleAreaKey(Qt::Key_N, Qt::ControlModifier));
    EXPECT_TRUE(editor->handleAreaKey(Qt::Key_Insert, 0));
    const QPointF before = editor->boxes()[0].corners[0];
    EXPECT_TRUE(editor->handleAreaKey(Qt::Key_Right, 0));
    EXPECT_TRUE(editor->handleAreaKey(Qt::Key_Down, Qt::ShiftModifier));
    const QPointF moved = editor->boxes()[0].corners[0] - before;
    EXPECT_NEAR(moved.x(), 1 / editor->imageRect().width(), 1e-12);
    EXPECT_NEAR(moved.y(), 10 / editor->imageRect().height(), 1e-12);
    for (int i = 0; i < 200; ++i)
        editor->handleAreaKey(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(editor->currentCornerPlace(), u"100% from the left, 7% from the top");
    EXPECT_TRUE(QRectF({}, editor->viewSize()).contains(at(1, 0.07) - QPointF(1, 0)))
        << "what moves stays in view";
    for (int corner = 1; corner < 4; ++corner)
        EXPECT_TRUE(editor->handleAreaKey(Qt::Key_Tab, 0));
    EXPECT_EQ(editor->currentCornerName(), u"Box 1, bottom left corner");
    EXPECT_FALSE(editor->handleAreaKey(Qt::Key_Tab, 0)) << "the focus goes on";
    EXPECT_TRUE(editor->handleAreaKey(Qt::Key_Backtab, Qt::ShiftModifier));
}

} // namespace
} // namespace velmor
