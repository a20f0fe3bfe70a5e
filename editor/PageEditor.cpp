#include "editor/PageEditor.h"

#include "editor/EditedFile.h"
#include "editor/EditorWords.h"
#include "pipeline/PageRaster.h"

#include <QCoroFuture>

#include <algorithm>
#include <utility>

namespace velmor {

PageEditor::PageEditor(QObject *parent) : QObject(parent)
{
    for (const auto source : {&PageEditor::boxesChanged, &PageEditor::levelsChanged}) {
        connect(this, source, this, &PageEditor::instructionChanged);
        connect(this, source, this, &PageEditor::canApplyChanged);
    }
    connect(this, &PageEditor::opened, this, &PageEditor::instructionChanged);
    // The page may move under a pointer at rest.
    connect(this, &PageEditor::placementChanged, this, &PageEditor::hoverChanged);
    connect(this, &PageEditor::busyChanged, this, &PageEditor::canApplyChanged);
}

PageEditor::~PageEditor() = default;

void PageEditor::setModel(AppModel *model)
{
    if (model == m_model)
        return;
    m_model = model;
    Q_EMIT modelChanged();
}

// --- The page --------------------------------------------------------------------------------

void PageEditor::open(const QUrl &url, EditorMode mode, const EditorViewport &viewport)
{
    m_url = url;
    m_mode = mode;
    m_pendingViewport = viewport;
    Q_EMIT opened();
    // Once the caller has laid out the view, whose size the viewport needs.
    const auto begin = [this, page = viewport.pageIndex] {
        if (!m_isDone)
            readFile(page);
    };
    QMetaObject::invokeMethod(this, begin, Qt::QueuedConnection);
}

QCoro::Task<> PageEditor::readFile(int wantedPage)
{
    const QPointer<PageEditor> self = this;
    m_wish = std::make_shared<const int>();
    QFuture<std::shared_ptr<EditedFile>> opening = openForEditing(m_url, m_wish);
    const std::shared_ptr<EditedFile> file = co_await opening;
    if (!self || m_isDone)
        co_return;
    m_file = file;
    m_pageIndex = std::clamp(wantedPage, 0, std::max(pageCount() - 1, 0));
    loadPage();
    if (!m_file)
        giveUp(tr("This file can't be opened"));
}

int PageEditor::pageCount() const
{
    return m_file ? m_file->pageCount : 0;
}

void PageEditor::setPageIndex(int index)
{
    index = std::clamp(index, 0, std::max(pageCount() - 1, 0));
    if (index == m_pageIndex || m_isDone)
        return;
    m_pageIndex = index;
    loadPage();
}

QString PageEditor::pageReadout() const
{
    return EditorWords::pageReadout(m_pageIndex, pageCount());
}

void PageEditor::loadPage()
{
    // What is still looked for on the page before isn't for this one.
    m_wish.reset();
    m_crop = CropBoxes();
    resetMagic();
    if (!m_pendingViewport)
        m_placement.fit();
    show({});
    Q_EMIT pageChanged();
    Q_EMIT boxesChanged();
    // An apply has the document to itself; the pass ends with it.
    if (m_file && !m_busy)
        loadInBackground();
}

QCoro::Task<> PageEditor::loadInBackground()
{
    const QPointer<PageEditor> self = this;
    const Wish wish = std::make_shared<const int>();
    m_wish = wish;
    QFuture<EditedPage> loading = loadForEditing(m_file, m_pageIndex, m_url, baseSide, wish);
    EditedPage page = co_await loading;
    if (!self || m_wish != wish || m_isDone)
        co_return;
    show(std::move(page));
    if (!hasImage())
        giveUp(tr("This page can't be shown"));
    if (!hasImage() || !isCrop())
        co_return;
    QFuture<std::optional<Quad>> finding = outlineForEditing(m_baseImage, wish);
    const std::optional<Quad> outline = co_await finding;
    if (!self || m_wish != wish || m_isDone || !outline)
        co_return;
    m_crop.propose(*outline);
    Q_EMIT boxesChanged();
}

void PageEditor::show(EditedPage page)
{
    m_page = std::move(page.page);
    m_baseImage = std::move(page.image);
    m_sample = std::move(page.sample);
    m_rawHistogram = std::move(page.histogram);
    m_displayImage = {};
    m_hint.clear();
    m_placement.image = m_baseImage.size();
    applyPendingViewport();
    Q_EMIT imageChanged();
    Q_EMIT displayImageChanged();
    Q_EMIT placementChanged();
    Q_EMIT levelsChanged();
}

void PageEditor::giveUp(const QString &hint)
{
    m_hint = hint;
    Q_EMIT imageChanged();
}

QImage PageEditor::displayImage() const
{
    if (!isMagic() || !magicTouched() || !hasImage())
        return m_baseImage;
    if (m_displayImage.isNull())
        m_displayImage = PageRaster::applyLevels(m_baseImage, blackLum(), whiteLum(), gamma())
                             .value_or(m_baseImage);
    return m_displayImage;
}

// --- Fitting, zoom and pan -------------------------------------------------------------------

void PageEditor::applyPendingViewport()
{
    if (!m_pendingViewport || !hasImage() || viewSize().isEmpty())
        return;
    m_placement.applyViewport(*std::exchange(m_pendingViewport, std::nullopt));
}

template <typename Change> void PageEditor::place(Change change)
{
    const PagePlacement before = m_placement;
    change(m_placement);
    if (m_placement != before)
        Q_EMIT placementChanged();
}

void PageEditor::setViewSize(QSizeF size)
{
    place([size](PagePlacement &placement) { placement.viewSize = size; });
}

QString PageEditor::zoomReadout() const
{
    return EditorWords::zoomReadout(zoom());
}

void PageEditor::fit()
{
    place([](PagePlacement &placement) { placement.fit(); });
}

void PageEditor::applyZoom(double factor, std::optional<QPointF> at)
{
    const QPointF middle(viewSize().width() / 2, viewSize().height() / 2);
    place([&](PagePlacement &placement) { placement.applyZoom(factor, at.value_or(middle)); });
}

void PageEditor::applyPan(QPointF delta)
{
    place([delta](PagePlacement &placement) { placement.applyPan(delta); });
}

void PageEditor::revealCurrentCorner()
{
    if (const auto &corner = m_crop.currentCorner())
        place([&](PagePlacement &placement) { placement.reveal(m_crop.cornerAt(*corner)); });
}

// --- Levels ----------------------------------------------------------------------------------

void PageEditor::setLevels(const MagicLevels &levels)
{
    if (levels == m_levels)
        return;
    m_levels = levels;
    m_displayImage = {};
    Q_EMIT levelsChanged();
    Q_EMIT displayImageChanged();
}

void PageEditor::setBlackLum(double value)
{
    MagicLevels levels = m_levels;
    levels.setLow(value);
    setLevels(levels);
}

void PageEditor::setWhiteLum(double value)
{
    MagicLevels levels = m_levels;
    levels.setHigh(value);
    setLevels(levels);
}

void PageEditor::setSoftness(double softness)
{
    MagicLevels levels = m_levels;
    levels.setSoftness(softness);
    setLevels(levels);
}

void PageEditor::autoSet()
{
    if (m_sample)
        setLevels(autoLevels(*m_sample));
}

void PageEditor::resetMagic()
{
    setLevels({});
}

QList<double> PageEditor::displayHistogram() const
{
    return velmor::displayHistogram(m_rawHistogram, m_levels);
}

QString PageEditor::levelsReadout() const
{
    return EditorWords::levelsReadout(m_levels);
}

QString PageEditor::gammaReadout() const
{
    return EditorWords::gammaReadout(m_levels);
}

QString PageEditor::blackValue() const
{
    return EditorWords::levelValue(blackLum());
}

QString PageEditor::whiteValue() const
{
    return EditorWords::levelValue(whiteLum());
}

QString PageEditor::instruction() const
{
    return isCrop() ? EditorWords::instruction(m_crop) : EditorWords::instruction(m_levels);
}

} // namespace velmor
