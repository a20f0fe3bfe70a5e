#include "browser/DrawerPlacement.h"

#include <algorithm>

namespace velmor {

DrawerPlacement placeDrawer(const QSize &drawer, const QRect &parent, const QRect &screen)
{
    DrawerPlacement place{
        {parent.x() + parent.width() + drawerGap, parent.y()},
        parent.topLeft()
    };
    if (screen.isEmpty())
        return place;
    const int screenEnd = screen.x() + screen.width();
    const int lowest = screen.y() + screen.height() - drawer.height();
    place.drawer.setY(std::max(screen.y(), std::min(parent.y(), lowest)));
    if (place.drawer.x() + drawer.width() <= screenEnd)
        return place;
    const int onTheLeft = parent.x() - drawerGap - drawer.width();
    if (onTheLeft >= screen.x()) {
        place.drawer.setX(onTheLeft);
        return place;
    }
    place.drawer.setX(std::max(screen.x(), screenEnd - drawer.width()));
    const int aside = place.drawer.x() - drawerGap - parent.width();
    if (aside >= screen.x())
        place.parent.setX(aside);
    return place;
}

} // namespace velmor
