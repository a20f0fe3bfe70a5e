#pragma once

#include <QList>
#include <QRect>
#include <QWindow>

namespace velmor {

/// The rows of a rectangle with rounded corners, top to bottom, each as wide as the middle of the
/// row is; the straight part is one piece. Radius and size in one unit, here physical pixels.
[[nodiscard]] QList<QRect> roundedRows(const QRect &box, double radius);

/// Lets the pointer through `window` but for `part`, in logical pixels of the window. Where the
/// window system has no such notion nothing happens.
///
/// It must be called again whenever the window is exposed anew: some window managers look at it
/// only then.
void setInputShape(QWindow &window, const QRect &part);

/// Cuts everything off `window` but a rectangle with rounded corners, in logical pixels of the
/// window. Only X11 can, and only there it is needed. The corners are as sharp as the screen.
void setVisibleShape(QWindow &window, const QRect &part, double radius);
/// Takes the cut back.
void clearVisibleShape(QWindow &window);

} // namespace velmor
