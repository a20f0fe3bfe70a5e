#pragma once

#include <QRect>

namespace velmor {

/// Where the drawer opens, and where the main window goes to make room for it. All in logical
/// pixels of the screens, top left.
struct DrawerPlacement {
    QPoint drawer;
    QPoint parent; ///< Where it is already, as a rule.

    bool operator==(const DrawerPlacement &) const = default;
};

/// Between the main window's right edge and the drawer.
inline constexpr int drawerGap = 10;

/// To the right of the main window with the top edges aligned. If that is off the screen: to its
/// left; if that is, too: at the screen's right edge, and the main window steps aside, as the
/// drawer is closed from there; on a screen too narrow for both, at its right edge over the main
/// window. An empty screen is one of unknown place and size.
[[nodiscard]] DrawerPlacement placeDrawer(const QSize &drawer, const QRect &parent,
                                          const QRect &screen);

} // namespace velmor
