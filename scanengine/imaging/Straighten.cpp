#include "scanengine/imaging/Straighten.h"

#include "scanengine/imaging/PageOutline.h"
#include "scanengine/imaging/PixelLimit.h"
#include "scanengine/imaging/Skew.h"
#include "scanengine/imaging/Turn.h"

#include <QTransform>

#include <algorithm>
#include <cmath>
#include <utility>

namespace scanengine {
namespace {

/// Degrees: a quarter of a millimetre over the height of an A4 page.
constexpr double leastTurn = 0.05;
/// Text that is out of true with its paper by more than this is so by intent.
constexpr double mostTextTilt = 3;
/// The edge of the paper is blurred.
constexpr double blurredEdgeMm = 0.2;

QRectF boxOf(const QPolygonF &polygon, double angle)
{
    return QTransform().rotate(-angle).map(polygon).boundingRect();
}

/// The fixed length that is asked for, in pixels.
std::optional<double> fixedLength(const std::optional<QString> &mode,
                                  const std::optional<double> &millimeters, int dotsPerMeter)
{
    const bool isAuto = mode && *mode == QLatin1StringView("auto");
    if (isAuto || !millimeters || !(*millimeters >= 1) || !(*millimeters <= 10'000))
        return std::nullopt;
    return std::max(1.0, *millimeters / 1000 * dotsPerMeter);
}

/// `from` to `to` made `length` long around its middle, and moved or cut to lie within the bed.
std::pair<double, double> fixedTo(double length, std::pair<double, double> span,
                                  std::pair<double, double> bed)
{
    length = std::min(length, bed.second - bed.first);
    const double start =
        std::clamp((span.first + span.second - length) / 2, bed.first, bed.second - length);
    return {start, start + length};
}

/// What to keep, along the axes of a page turned by `angle`, with the origin of the image's.
QRectF keptBox(const QImage &image, const PageOutline &page, const AutoSwitches &switches,
               double angle)
{
    const QRectF bed = boxOf(QPolygonF(QRectF({0, 0}, QSizeF(image.size()))), angle);
    QRectF box = boxOf(page.corners(), angle);
    if (angle == 0)
        box &= bed;
    if (const auto width =
            fixedLength(switches.cropWidthMode, switches.cropFixedWidthMm, image.dotsPerMeterX())) {
        const auto span = fixedTo(*width, {box.left(), box.right()}, {bed.left(), bed.right()});
        box.setLeft(span.first);
        box.setRight(span.second);
    }
    if (const auto height = fixedLength(switches.cropHeightMode, switches.cropFixedHeightMm,
                                        image.dotsPerMeterY())) {
        const auto span = fixedTo(*height, {box.top(), box.bottom()}, {bed.top(), bed.bottom()});
        box.setTop(span.first);
        box.setBottom(span.second);
    }
    return box;
}

/// The page without its blurred edges, if all of the rest is paper.
QPolygonF paperOf(const PageOutline &page, int dotsPerMeter)
{
    if (!page.hasStraightEdges || page.sheets > 1)
        return {};
    PageOutline inner = page;
    const double inset = std::min(
        {blurredEdgeMm / 1000 * dotsPerMeter, page.size.width() / 4, page.size.height() / 4});
    inner.size -= QSizeF(2 * inset, 2 * inset);
    return inner.corners();
}

} // namespace

std::optional<double> pageSkew(const QImage &image, const std::optional<PageOutline> &page)
{
    // The text of several sheets is level only if the sheets are.
    const bool areApart = page && page->sheets > 1 && !page->hasStraightEdges;
    const auto text =
        areApart ? std::nullopt : textSkew(image, page ? page->corners() : QPolygonF());
    if (!page || !page->hasStraightEdges)
        return text ? std::optional(text->angle) : std::nullopt;
    const bool isTextBetter =
        text && text->isClear && std::abs(text->angle - page->angle) <= mostTextTilt;
    return isTextBetter ? text->angle : page->angle;
}

QImage straightened(QImage image, const AutoSwitches &switches)
{
    if (!switches.crop && !switches.deskew)
        return image;
    const std::optional<PageOutline> page = findPage(image);
    const double skew = switches.deskew ? pageSkew(image, page).value_or(0) : 0;
    const double angle = std::abs(skew) < leastTurn ? 0 : skew;
    const bool isCropped = switches.crop && page;
    const QRectF box = isCropped ? keptBox(image, *page, switches, angle)
                                 : boxOf(QPolygonF(QRectF({0, 0}, QSizeF(image.size()))), angle);
    if (angle == 0) {
        // Whole pixels, so that none is mixed with its neighbour.
        const QRect kept = box.toAlignedRect() & image.rect();
        return kept == image.rect() || kept.isEmpty() ? image : image.copy(kept);
    }
    const Window window{
        QTransform().rotate(angle).map(box.center()),
        QSizeF(std::ceil(box.width() - 0.01), std::ceil(box.height() - 0.01)).toSize(), angle};
    if (!isWithinPixelLimit(window.size))
        return image;
    return turnedWindow(image, window,
                        isCropped ? paperOf(*page, image.dotsPerMeterX()) : QPolygonF());
}

} // namespace scanengine
