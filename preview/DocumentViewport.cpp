#include "preview/DocumentViewport.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// Where a stretch of `shown` starts on a line of `whole` when `wanted` is the wish.
double limitedStart(double wanted, double whole, double shown)
{
    return whole <= shown ? (whole - shown) / 2 : std::clamp(wanted, 0.0, whole - shown);
}

/// The nearest start at which a stretch of `shown` covers `from` to `to`; its middle if it can't.
double revealingStart(double start, double shown, double from, double to)
{
    if (to - from > shown)
        return (from + to - shown) / 2;
    return std::clamp(start, to - shown, from);
}

} // namespace

void DocumentViewport::setPages(const QList<PageSheet> &pages)
{
    m_pages = pages;
    m_tops.clear();
    m_contentSize = QSizeF(0, 0);
    for (const PageSheet &page : pages) {
        if (!m_tops.isEmpty())
            m_contentSize.rheight() += pageGap;
        m_tops.append(m_contentSize.height());
        m_contentSize.rheight() += page.size().height();
        m_contentSize.rwidth() = std::max(m_contentSize.width(), page.size().width());
    }
    scrollTo({});
}

void DocumentViewport::setViewSize(QSizeF size)
{
    m_viewSize = size;
    scrollTo(m_topLeft);
}

void DocumentViewport::setScale(double scale, QPointF fixed)
{
    const QPointF place = m_topLeft + fixed / m_scale;
    m_scale = std::clamp(scale, minScale, maxScale);
    scrollTo(place - fixed / m_scale);
}

double DocumentViewport::fitScale() const
{
    return m_contentSize.width() > 0 ? m_viewSize.width() / m_contentSize.width() : 0;
}

QRectF DocumentViewport::visible() const
{
    return {m_topLeft, m_viewSize / m_scale};
}

void DocumentViewport::scrollTo(QPointF topLeft)
{
    m_topLeft = limited(topLeft);
}

QPointF DocumentViewport::limited(QPointF topLeft) const
{
    const QSizeF shown = m_viewSize / m_scale;
    return {limitedStart(topLeft.x(), m_contentSize.width(), shown.width()),
            limitedStart(topLeft.y(), m_contentSize.height(), shown.height())};
}

void DocumentViewport::reveal(int page, const QRectF &box)
{
    const QRectF target = box.translated(pageRect(page).topLeft());
    const QRectF view = visible();
    const auto along = [](double start, double shown, double from, double to) {
        if (from >= start && to <= start + shown)
            return start;
        const double margin = std::clamp((shown - (to - from)) / 2, 0.0, shown / 4);
        return revealingStart(start, shown, from - margin, to + margin);
    };
    scrollTo({along(view.left(), view.width(), target.left(), target.right()),
              along(view.top(), view.height(), target.top(), target.bottom())});
}

QRectF DocumentViewport::pageRect(int page) const
{
    const QSizeF size = m_pages[page].size();
    return {QPointF((m_contentSize.width() - size.width()) / 2, m_tops[page]), size};
}

QRectF DocumentViewport::toView(int page, const QRectF &box) const
{
    const QPointF corner = pageRect(page).topLeft() + box.topLeft() - m_topLeft;
    return {corner * m_scale, box.size() * m_scale};
}

int DocumentViewport::firstPageBelow(double y) const
{
    const auto after = std::ranges::upper_bound(m_tops, y);
    const int page = std::max(0, static_cast<int>(after - m_tops.begin()) - 1);
    const bool isAbove = y > pageRect(page).bottom() && page + 1 < m_pages.size();
    return isAbove ? page + 1 : page;
}

QList<int> DocumentViewport::visiblePages() const
{
    QList<int> pages;
    if (m_pages.isEmpty() || m_viewSize.isEmpty())
        return pages;
    const QRectF view = visible();
    for (int page = firstPageBelow(view.top()); page < m_pages.size(); ++page) {
        if (m_tops[page] >= view.bottom())
            break;
        pages.append(page);
    }
    return pages;
}

std::optional<int> DocumentViewport::currentPage() const
{
    std::optional<int> current;
    double most = -1;
    const QRectF view = visible();
    for (const int page : visiblePages()) {
        const QRectF shown = pageRect(page).intersected(view);
        const double area = shown.width() * shown.height();
        // Equal pages differ by a rounding.
        if (area > most * (1 + 1e-9)) {
            most = area;
            current = page;
        }
    }
    if (!current && !m_pages.isEmpty())
        current = firstPageBelow(view.top());
    return current;
}

std::optional<PagePlace> DocumentViewport::placeAt(QPointF point) const
{
    if (m_pages.isEmpty())
        return std::nullopt;
    const QPointF place = m_topLeft + point / m_scale;
    int page = firstPageBelow(place.y());
    if (page > 0 && m_tops[page] - place.y() > place.y() - pageRect(page - 1).bottom())
        --page;
    const QRectF rect = pageRect(page);
    const QPointF on(std::clamp(place.x(), rect.left(), rect.right()),
                     std::clamp(place.y(), rect.top(), rect.bottom()));
    return PagePlace{page, on - rect.topLeft()};
}

QRectF DocumentViewport::visibleInPageSpace(int page) const
{
    return m_pages[page].toPageSpace().mapRect(visible().translated(-pageRect(page).topLeft()));
}

EditorViewport DocumentViewport::editorViewport() const
{
    EditorViewport viewport;
    const std::optional<int> page = currentPage();
    if (!page)
        return viewport;
    viewport.pageIndex = *page;
    const double fit = fitScale();
    if (fit > 0)
        viewport.zoom = std::max(1.0, m_scale / fit);
    const QRectF box = m_pages[*page].cropBox;
    if (box.width() > 0 && box.height() > 0) {
        // QRectF counts y downwards: its top is the lower edge in page space.
        const QPointF middle = visibleInPageSpace(*page).center() - box.topLeft();
        viewport.center = QPointF(middle.x() / box.width(), 1 - middle.y() / box.height());
    }
    return viewport;
}

} // namespace velmor
