#pragma once

#include <QRect>

namespace velmor {

/// Where the drawer opens and how large, and where the main window goes to make room for it. All
/// in logical pixels of the screens, top left.
struct DrawerPlacement {
    QRect drawer;
    QPoint parent; ///< Where it is already, as a rule.

    bool operator==(const DrawerPlacement &) const = default;
};

/// Between the main window's right edge and the drawer.
inline constexpr int drawerGap = 10;

/// What the drawer would like to be, and the least it can be.
struct DrawerSizes {
    QSize wanted;
    QSize smallest;
};

/// To the right of the main window with the top edges aligned. If that is off the screen: to its
/// left; if that is, too: at the screen's right edge, and the main window steps aside, as the
/// drawer is closed from there.
///
/// On a screen too narrow for both the drawer gives up some of its width. Where even its smallest
/// one is too much it opens at the right edge, over the main window. It is never larger than the
/// screen, unless that is smaller than its smallest size. An empty screen is one of unknown place
/// and size.
[[nodiscard]] DrawerPlacement placeDrawer(const DrawerSizes &sizes, const QRect &parent,
                                          const QRect &screen);

/// The size that leaves the whole drawer on a screen of `screenWidth` if the main window, which is
/// `parentWidth` wide, is in its middle: where new windows open as a rule. For where no window
/// knows its place.
[[nodiscard]] QSize drawerSizeBesideCentre(const DrawerSizes &sizes, int parentWidth,
                                           int screenWidth);

} // namespace velmor
