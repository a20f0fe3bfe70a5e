#pragma once

#include "windows/CardWindow.h"

namespace velmor {

/// The main window. `MainWindow.qml` builds on it: the content decides on the size. It takes the
/// keyboard like any other window, although it has no frame.
class KeyableMainWindow : public velmor::CardWindow {
    Q_OBJECT
    QML_ELEMENT

public:
    /// The size before the content says its own.
    static constexpr QSize nominalSize{380, 560};

    explicit KeyableMainWindow(QWindow *parent = nullptr);

    /// The card's top left corner at the start, on a screen whose part for windows is
    /// `visibleFrame`. The width counted with is the nominal one.
    [[nodiscard]] static QPoint startPosition(const QRect &visibleFrame);
    /// Goes there on the main screen; without one it stays where it is.
    void placeAtStart();
};

} // namespace velmor
