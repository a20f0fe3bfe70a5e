#pragma once

#include <QRect>

class QWindow;

namespace velmor {

/// Whether windows know where on the screen they are, and can say where they want to be. Wayland
/// tells them nothing.
[[nodiscard]] bool isPlaceKnown();

/// The part of the window's screen that windows use, less `margin` on each side, in logical pixels;
/// empty where no window knows its place.
[[nodiscard]] QRect usableScreen(const QWindow &window, int margin);

} // namespace velmor
