import QtQuick
import Velmor.Controls
import Velmor.Windows
import Velmor.Calibration

// The calibration screen as a card of its own, closed with its button, with Escape, Ctrl+W or by
// the desktop.
CardWindow {
    id: window

    required property Calibration calibration

    title: qsTr("Calibrate")
    flags: Qt.Dialog | Qt.FramelessWindowHint
    cardWidth: Math.ceil(view.implicitWidth)
    cardHeight: Math.ceil(view.implicitHeight)
    cardRadius: Theme.cardRadius
    shadowMargin: 48
    onCloseAsked: calibration.finish()

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.calibration.finish()
    }

    SoftShadow {
        anchors.fill: view
        visible: window.composited
        radius: window.cardRadius
        blur: 14
        offsetY: 6
        color: "#4D000000"
    }

    // Where the window is cut to the card's shape, its soft edge blends into this.
    Rectangle {
        anchors.fill: view
        visible: !window.composited
        color: Theme.gradientTop
    }

    BackgroundGradient {
        anchors.fill: view
        radius: window.cardRadius
    }

    CalibrationView {
        id: view

        x: window.margin
        y: window.margin
        width: window.cardWidth
        height: window.cardHeight
        focus: true
        calibration: window.calibration
    }
}
