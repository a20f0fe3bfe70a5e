import QtQuick
import Velmor.Controls

// The white capsule over the grey button.
Item {
    id: hint

    property string text
    property bool searching: false

    width: row.width
    height: row.height

    SoftShadow {
        anchors.fill: parent
        radius: height / 2
        blur: 8
        offsetY: 3
        color: Qt.rgba(0, 0, 0, 0.12)
    }

    RoundedBox {
        anchors.fill: parent
        radius: height / 2
        color: "#FFFFFF"
    }

    Row {
        id: row

        leftPadding: 16
        rightPadding: 16
        topPadding: 8
        bottomPadding: 8
        spacing: 6

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            width: 12
            height: 12
            running: hint.searching && hint.visible
        }

        Text {
            text: hint.text
            font.family: Theme.fontFamily
            font.pixelSize: 12
            font.weight: Font.Medium
            color: Theme.textPrimary
        }
    }
}
