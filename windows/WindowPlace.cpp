#include "windows/WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace velmor {

bool isPlaceKnown()
{
    return !QGuiApplication::platformName().startsWith(u"wayland");
}

QRect usableScreen(const QWindow &window, int margin)
{
    if (!isPlaceKnown() || !window.screen())
        return {};
    return window.screen()->availableGeometry().marginsRemoved(QMargins() + margin);
}

} // namespace velmor
