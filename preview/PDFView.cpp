#include "preview/PDFView.h"

#include "controls/Motion.h"
#include "preview/Background.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>

#include <algorithm>

namespace velmor {

namespace {

constexpr int settlingMs = 120;
constexpr int oldPagesMs = 250;
constexpr int dragScrollMs = 16;
constexpr int scrollMs = 140;

constexpr QColor selectionColor(122, 90, 248, 77);
constexpr QColor matchColor(255, 204, 0, 102);
constexpr QColor currentMatchColor(255, 128, 0, 140);
/// How far the mark of a found place goes beyond the box of its text, as a share of its height:
/// invisible letters lie only roughly under those of the page.
constexpr qreal matchRoom = 0.15;

} // namespace

PDFView::PDFView(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setClip(true);
    setActiveFocusOnTab(true);
    setAcceptedMouseButtons(Qt::LeftButton | Qt::MiddleButton);
    setAcceptHoverEvents(true);
    setAcceptTouchEvents(true);

    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingMs);
    connect(&m_settling, &QTimer::timeout, this, &PDFView::pictureTheView);
    m_oldPages.setSingleShot(true);
    m_oldPages.setInterval(oldPagesMs);
    connect(&m_oldPages, &QTimer::timeout, this, [this] { show(nullptr); });
    m_dragScroll.setInterval(dragScrollMs);
    connect(&m_dragScroll, &QTimer::timeout, this, &PDFView::followPointer);
    m_scroll.setDuration(scrollMs);
    m_scroll.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_scroll, &QVariantAnimation::valueChanged, this, [this](const QVariant &topLeft) {
        move([&] { m_viewport.scrollTo(topLeft.toPointF()); });
    });

    connect(&m_pictures, &PagePictures::arrived, this, &PDFView::refresh);
    connect(&m_selection, &TextSelection::changed, this, &PDFView::refresh);
    connect(&m_selection, &TextSelection::copied, this,
            [](const QString &text) { QGuiApplication::clipboard()->setText(text); });
    connect(&m_search, &TextSearch::changed, this, &PDFView::refresh);
    connect(&m_search, &TextSearch::currentFound, this, [this](int page, const QRectF &box) {
        stopScrolling();
        move([&] { m_viewport.reveal(page, box); });
    });
}

PDFView::~PDFView() = default;

void PDFView::open(const QUrl &url)
{
    m_wish = std::make_shared<const int>();
    m_oldPages.start();
    const auto wish = std::weak_ptr<const void>(m_wish);
    whenAnswered(this, PreviewDocument::open(url, wish),
                 [this, wish](const std::shared_ptr<PreviewDocument> &document) {
                     if (wish.expired())
                         return;
                     m_wish.reset();
                     show(document);
                 });
}

void PDFView::show(const std::shared_ptr<PreviewDocument> &document)
{
    m_oldPages.stop();
    stopScrolling();
    m_drag = Drag::none;
    m_dragScroll.stop();
    m_hoveredPage = -1;
    m_hoveredText.reset();
    m_shown = document;
    m_pictures.setDocument(document);
    m_selection.setDocument(document);
    m_search.setDocument(document);
    m_viewport.setPages(document ? document->pages() : QList<PageSheet>());
    Q_EMIT documentChanged();
    m_settling.stop();
    pictureTheView();
    Q_EMIT scrolled();
}

const PreviewDocument *PDFView::document() const
{
    return m_wish ? nullptr : m_shown.get();
}

QString PDFView::documentName() const
{
    return document() ? document()->documentURL().fileName() : QString();
}

int PDFView::pageCount() const
{
    return static_cast<int>(m_viewport.pages().size());
}

template <typename Change> void PDFView::move(Change change)
{
    const double scale = m_viewport.scale();
    const QRectF before = m_viewport.visible();
    change();
    const bool zoomed = m_viewport.scale() != scale;
    if (!zoomed && m_viewport.visible() == before)
        return;
    if (zoomed) {
        m_settling.start();
        Q_EMIT scaleChanged();
    }
    pictureTheView();
    Q_EMIT scrolled();
}

void PDFView::pictureTheView()
{
    m_search.setShownPage(std::max(0, currentPageIndex()));
    m_pictures.want(neededPictures(m_viewport, pixelRatio()),
                    m_settling.isActive() ? PagePictures::Sharpness::anyPicture
                                          : PagePictures::Sharpness::asWanted);
    refresh();
}

double PDFView::pixelRatio() const
{
    return window() ? window()->effectiveDevicePixelRatio() : 1;
}

double PDFView::scaleFactorForSizeToFit() const
{
    return m_viewport.fitScale();
}

void PDFView::setScaleFactor(double scale)
{
    stopScrolling();
    move([&] { m_viewport.setScale(scale, {width() / 2, 0}); });
}

void PDFView::zoomAbout(double factor, QPointF point)
{
    stopScrolling();
    move([&] { m_viewport.setScale(m_viewport.scale() * factor, point); });
}

void PDFView::zoomBy(double factor)
{
    zoomAbout(factor, {width() / 2, height() / 2});
}

QRectF PDFView::visibleShare() const
{
    const QSizeF all = m_viewport.contentSize();
    if (all.isEmpty())
        return {0, 0, 1, 1};
    const QRectF seen = m_viewport.visible().intersected(QRectF(QPointF(0, 0), all));
    return {seen.x() / all.width(), seen.y() / all.height(), seen.width() / all.width(),
            seen.height() / all.height()};
}

void PDFView::scrollToShare(QPointF start)
{
    stopScrolling();
    const QSizeF all = m_viewport.contentSize();
    move([&] { m_viewport.scrollTo({start.x() * all.width(), start.y() * all.height()}); });
}

void PDFView::scrollBy(QPointF pixels, Scrolling scrolling)
{
    const QPointF from = m_viewport.visible().topLeft();
    const QPointF step = pixels / m_viewport.scale();
    const auto *const motion = qmlEngine(this) ? Motion::of(*qmlEngine(this)) : nullptr;
    if (scrolling == Scrolling::atOnce || !motion || motion->isReduced()) {
        stopScrolling();
        move([&] { m_viewport.scrollTo(from + step); });
        return;
    }
    // A further step goes on from where the last one leads.
    const bool onTheWay = m_scroll.state() == QAbstractAnimation::Running;
    DocumentViewport target = m_viewport;
    target.scrollTo((onTheWay ? m_scroll.endValue().toPointF() : from) + step);
    m_scroll.stop();
    m_scroll.setStartValue(from);
    m_scroll.setEndValue(target.visible().topLeft());
    m_scroll.start();
}

void PDFView::stopScrolling()
{
    m_scroll.stop();
}

void PDFView::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() == before.size())
        return;
    stopScrolling();
    move([&] { m_viewport.setViewSize(now.size()); });
    Q_EMIT frameChanged();
}

void PDFView::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged || (change == ItemSceneChange && data.window))
        pictureTheView();
}

void PDFView::refresh()
{
    polish();
    update();
}

void PDFView::updatePolish()
{
    m_pages.clear();
    for (const int page : m_viewport.visiblePages())
        m_pages.append(shownPage(page));
}

ShownPage PDFView::shownPage(int index)
{
    const double ratio = pixelRatio();
    const QRectF sheet(QPointF(0, 0), m_viewport.pages()[index].size());
    const QRect pixels = windowPixels(m_viewport.toView(index, sheet), ratio);
    ShownPage page;
    page.page = index;
    page.rect = QRectF(QPointF(pixels.topLeft()) / ratio, QSizeF(pixels.size()) / ratio);

    const PagePicture *const whole = m_pictures.picture(index, PictureExtent::whole);
    if (whole)
        page.whole = whole->image;
    const bool isSharp = whole && whole->request.pagePixels == pixels.size();
    const PagePicture *const part = m_pictures.picture(index, PictureExtent::part);
    if (part && !isSharp) {
        page.part = part->image;
        QTransform toView = QTransform::fromTranslate(page.rect.x(), page.rect.y());
        toView.scale(page.rect.width() / sheet.width(), page.rect.height() / sheet.height());
        page.partRect = toView.mapRect(part->request.area(sheet.size()));
    }

    const auto mark = [&](QColor color, const QList<QRectF> &boxes, qreal room) {
        PageMarks marks{color, {}};
        for (const QRectF &box : boxes) {
            const qreal more = room * std::min(box.width(), box.height());
            marks.boxes.append(m_viewport.toView(index, box.adjusted(-more, -more, more, more)));
        }
        page.marks.append(marks);
    };
    const TextSearch::Boxes found = m_search.boxes(index);
    mark(matchColor, found.others, matchRoom);
    mark(currentMatchColor, found.current, matchRoom);
    // Without room, as the boxes of one line would overlap.
    mark(selectionColor, m_selection.boxes(index), 0);
    return page;
}

QSGNode *PDFView::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *nodes = static_cast<PageNodes *>(old);
    if (!nodes)
        nodes = new PageNodes;
    nodes->show(*window(), m_pages);
    return nodes;
}

} // namespace velmor
