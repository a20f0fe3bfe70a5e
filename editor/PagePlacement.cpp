#include "editor/PagePlacement.h"

#include <algorithm>

namespace velmor {

namespace {

/// What is brought into view stands this far from the edges of the area.
constexpr double revealMargin = 24;

/// The middle of an image of `length` on an axis of the area that is `room` long.
double centreOn(double room, double length, double pan)
{
    if (length <= room)
        return room / 2;
    return std::min(std::max(room / 2 + pan, room - length / 2), length / 2);
}

} // namespace

QRectF fittedRect(QSizeF image, QSizeF area)
{
    if (image.isEmpty() || area.isEmpty())
        return {};
    const double s = std::min(area.width() / image.width(), area.height() / image.height());
    const QSizeF size = image * s;
    return {(area.width() - size.width()) / 2, (area.height() - size.height()) / 2, size.width(),
            size.height()};
}

QPointF PagePlacement::middle() const
{
    return {viewSize.width() / 2, viewSize.height() / 2};
}

QSizeF PagePlacement::zoomedSize() const
{
    return fittedRect(image, viewSize).size() * zoom;
}

QRectF PagePlacement::imageRect() const
{
    const QSizeF size = zoomedSize();
    const QPointF centre(centreOn(viewSize.width(), size.width(), pan.x()),
                         centreOn(viewSize.height(), size.height(), pan.y()));
    return {centre.x() - size.width() / 2, centre.y() - size.height() / 2, size.width(),
            size.height()};
}

QPointF PagePlacement::clampedPan(QPointF proposed) const
{
    if (image.isEmpty() || viewSize.isNull())
        return proposed;
    const QSizeF size = zoomedSize();
    const double maxX = std::max(0.0, (size.width() - viewSize.width()) / 2);
    const double maxY = std::max(0.0, (size.height() - viewSize.height()) / 2);
    return {std::min(std::max(proposed.x(), -maxX), maxX),
            std::min(std::max(proposed.y(), -maxY), maxY)};
}

void PagePlacement::applyZoom(double factor, QPointF anchor)
{
    if (image.isEmpty())
        return;
    const double next = std::min(std::max(zoom * factor, smallestZoom), largestZoom);
    if (next == zoom)
        return;
    const QPointF centre = middle() + pan;
    const QPointF newCentre = anchor - (anchor - centre) * (next / zoom);
    zoom = next;
    pan = next == smallestZoom ? QPointF() : clampedPan(newCentre - middle());
}

void PagePlacement::applyPan(QPointF delta)
{
    if (zoom > smallestZoom)
        pan = clampedPan(pan + delta);
}

void PagePlacement::applyViewport(const EditorViewport &viewport)
{
    fit();
    zoom = std::min(std::max(viewport.zoom, smallestZoom), largestZoom);
    if (zoom == smallestZoom || !viewport.center)
        return;
    const QSizeF size = zoomedSize();
    pan = clampedPan({(0.5 - viewport.center->x()) * size.width(),
                      (0.5 - viewport.center->y()) * size.height()});
}

void PagePlacement::reveal(QPointF place)
{
    const QRectF rect = imageRect();
    const QPointF at(rect.left() + place.x() * rect.width(),
                     rect.top() + place.y() * rect.height());
    const QRectF inside =
        QRectF({}, viewSize)
            .marginsRemoved({revealMargin, revealMargin, revealMargin, revealMargin});
    if (inside.isEmpty())
        return;
    const QPointF wanted(std::clamp(at.x(), inside.left(), inside.right()),
                         std::clamp(at.y(), inside.top(), inside.bottom()));
    applyPan(wanted - at);
}

void PagePlacement::fit()
{
    zoom = smallestZoom;
    pan = {};
}

} // namespace velmor
