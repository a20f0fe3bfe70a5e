import QtQuick
import Velmor.Controls

// The large round button. It shrinks a little while pressed.
PlainButton {
    id: button

    implicitWidth: 84
    implicitHeight: 84
    radius: width / 2
    color: "#FFFFFF"
    scale: press.value

    background: Item {
        SoftShadow {
            anchors.fill: parent
            radius: button.radius
            blur: 16
            offsetY: 8
            color: Qt.alpha(Theme.accent, 0.45)
        }

        Disc {
            anchors.fill: parent
            color: button.down ? Theme.accentPressed : Theme.accent
        }
    }

    Spring {
        id: press

        to: button.down ? 0.96 : 1
        response: 0.25
        damping: 0.6
    }
}
