#include "browser/DrawerPlacement.h"

#include <algorithm>

namespace velmor {

namespace {

QSize fittingSize(const DrawerSizes &sizes, int parentWidth, const QSize &screen)
{
    const int beside = screen.width() - parentWidth - drawerGap;
    QSize room = screen;
    if (beside >= sizes.smallest.width())
        room.setWidth(beside);
    return sizes.wanted.boundedTo(room.expandedTo(sizes.smallest));
}

} // namespace

DrawerPlacement placeDrawer(const DrawerSizes &sizes, const QRect &parent, const QRect &screen)
{
    const QPoint toTheRight(parent.x() + parent.width() + drawerGap, parent.y());
    DrawerPlacement place{
        {toTheRight, sizes.wanted},
        parent.topLeft()
    };
    if (screen.isEmpty())
        return place;
    QRect &drawer = place.drawer;
    drawer.setSize(fittingSize(sizes, parent.width(), screen.size()));
    const int screenEnd = screen.x() + screen.width();
    const int lowest = screen.y() + screen.height() - drawer.height();
    drawer.moveTop(std::max(screen.y(), std::min(parent.y(), lowest)));
    if (drawer.x() + drawer.width() <= screenEnd)
        return place;
    const int onTheLeft = parent.x() - drawerGap - drawer.width();
    if (onTheLeft >= screen.x()) {
        drawer.moveLeft(onTheLeft);
        return place;
    }
    drawer.moveLeft(std::max(screen.x(), screenEnd - drawer.width()));
    const int aside = drawer.x() - drawerGap - parent.width();
    if (aside >= screen.x())
        place.parent.setX(aside);
    return place;
}

QSize drawerSizeBesideCentre(const DrawerSizes &sizes, int parentWidth, int screenWidth)
{
    const int room = (screenWidth - parentWidth) / 2 - drawerGap;
    const int width = std::max(sizes.smallest.width(), std::min(sizes.wanted.width(), room));
    return {width, sizes.wanted.height()};
}

} // namespace velmor
