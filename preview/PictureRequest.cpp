#include "preview/PictureRequest.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// The most pixels, and the longest side, of a page that is drawn as a whole.
constexpr double largestWhole = 4e6;
constexpr int longestSide = 8192;
/// The pixels of the coarse picture of a page that isn't.
constexpr double coarseWhole = 1e6;
/// What a new picture shows around the visible part of a page, in pixels, and how little of that
/// may be left before the next one is drawn.
constexpr int partMargin = 256;
constexpr int leastMargin = 64;

QSize atLeastOnePixel(QSizeF size)
{
    return {std::max(1, static_cast<int>(std::lround(size.width()))),
            std::max(1, static_cast<int>(std::lround(size.height())))};
}

PictureRequest wholePage(int page, QSize pixels)
{
    const QRect all(QPoint(0, 0), pixels);
    return {page, PictureExtent::whole, pixels, all, all};
}

bool isDrawnWhole(QSizeF pixels)
{
    return pixels.width() * pixels.height() <= largestWhole &&
           std::max(pixels.width(), pixels.height()) <= longestSide;
}

/// `pixels` reduced in shape to what a coarse picture has.
QSize coarse(QSizeF pixels)
{
    const double byArea = std::sqrt(coarseWhole / (pixels.width() * pixels.height()));
    const double bySide = longestSide / std::max(pixels.width(), pixels.height());
    return atLeastOnePixel(pixels * std::min({1.0, byArea, bySide}));
}

QRect grown(const QRect &rect, int margin, QSize page)
{
    return rect.adjusted(-margin, -margin, margin, margin).intersected(QRect(QPoint(0, 0), page));
}

} // namespace

QRectF PictureRequest::area(QSizeF sheetSize) const
{
    const double across = sheetSize.width() / pagePixels.width();
    const double down = sheetSize.height() / pagePixels.height();
    return {pixels.x() * across, pixels.y() * down, pixels.width() * across,
            pixels.height() * down};
}

bool PictureRequest::serves(const PictureRequest &wanted) const
{
    return page == wanted.page && extent == wanted.extent && pagePixels == wanted.pagePixels &&
           pixels.contains(wanted.needed);
}

QRect windowPixels(const QRectF &box, double devicePixelRatio)
{
    const QPointF corner = box.topLeft() * devicePixelRatio;
    return {QPoint(static_cast<int>(std::lround(corner.x())),
                   static_cast<int>(std::lround(corner.y()))),
            atLeastOnePixel(box.size() * devicePixelRatio)};
}

QList<PictureRequest> neededPictures(const DocumentViewport &viewport, double devicePixelRatio)
{
    QList<PictureRequest> needed;
    const QList<int> visible = viewport.visiblePages();
    if (visible.isEmpty())
        return needed;
    const auto pixelsOf = [&](int page) {
        return viewport.pages()[page].size() * (viewport.scale() * devicePixelRatio);
    };
    const auto addWhole = [&](int page) {
        const QSizeF pixels = pixelsOf(page);
        needed.append(
            wholePage(page, isDrawnWhole(pixels) ? atLeastOnePixel(pixels) : coarse(pixels)));
    };
    for (const int page : visible)
        addWhole(page);
    const QRect window(QPoint(0, 0), (viewport.viewSize() * devicePixelRatio).toSize());
    for (const int page : visible) {
        if (isDrawnWhole(pixelsOf(page)))
            continue;
        const QRectF sheet(QPointF(0, 0), viewport.pages()[page].size());
        const QRect place = windowPixels(viewport.toView(page, sheet), devicePixelRatio);
        const QRect shown = window.intersected(place).translated(-place.topLeft());
        if (!shown.isEmpty())
            needed.append({page, PictureExtent::part, place.size(),
                           grown(shown, partMargin, place.size()),
                           grown(shown, leastMargin, place.size())});
    }
    if (visible.last() + 1 < viewport.pages().size())
        addWhole(visible.last() + 1);
    if (visible.first() > 0)
        addWhole(visible.first() - 1);
    return needed;
}

} // namespace velmor
