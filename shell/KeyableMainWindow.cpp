#include "shell/KeyableMainWindow.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmor {

namespace {

/// Between the top of the screen and the card.
constexpr int spaceAbove = 100;

} // namespace

KeyableMainWindow::KeyableMainWindow(QWindow *parent) : CardWindow(parent)
{
    setCardSize(nominalSize);
}

QPoint KeyableMainWindow::startPosition(const QRect &visibleFrame)
{
    return {visibleFrame.x() + visibleFrame.width() / 2 - nominalSize.width() / 2,
            visibleFrame.y() + spaceAbove};
}

void KeyableMainWindow::placeAtStart()
{
    if (const QScreen *mainScreen = QGuiApplication::primaryScreen())
        setCardPosition(startPosition(mainScreen->availableGeometry()));
}

} // namespace velmor
