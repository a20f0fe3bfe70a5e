import QtQuick
import Velmor.Controls

// The green circle with the number of pages of a scan that was saved. It grows in and shrinks away.
Item {
    id: flash

    property bool shown: false
    property string text

    width: 84
    height: 84
    scale: 0.6 + 0.4 * way.value
    opacity: Math.max(0, Math.min(1, way.value))
    visible: opacity > 0.001

    Spring {
        id: way

        to: flash.shown ? 1 : 0
        response: 0.4
        damping: 0.75
    }

    SoftShadow {
        anchors.fill: parent
        radius: 42
        blur: 30
        offsetY: 12
        color: Qt.alpha(Theme.success, 0.5)
    }

    Disc {
        anchors.fill: parent
        color: Theme.success
    }

    Column {
        anchors.centerIn: parent
        spacing: 2

        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "check"
            size: 26
            weight: Font.Bold
            color: "#FFFFFF"
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: flash.text
            font.family: Theme.fontFamily
            font.pixelSize: 10
            font.weight: Font.DemiBold
            color: Qt.rgba(1, 1, 1, 0.9)
        }
    }
}
