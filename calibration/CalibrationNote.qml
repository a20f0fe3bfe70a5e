import QtQuick
import Velmor.Controls

// What goes on, or went wrong, in a capsule over the pictures. Without a text it isn't there.
Item {
    id: note

    property string text
    property bool isBusy: false
    property bool hasFailed: false
    property real widest: 400

    visible: text !== ""
    width: row.width
    height: row.height

    SoftShadow {
        anchors.fill: parent
        radius: plate.radius
        blur: 8
        offsetY: 3
        color: Qt.rgba(0, 0, 0, 0.16)
    }

    RoundedBox {
        id: plate

        anchors.fill: parent
        radius: Math.min(height / 2, 16)
        color: "#FFFFFF"
    }

    Row {
        id: row

        leftPadding: 14
        rightPadding: 14
        topPadding: 8
        bottomPadding: 8
        spacing: 6

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            width: 12
            height: 12
            running: note.isBusy
        }

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: note.hasFailed
            name: "warning"
            size: 12
            weight: Font.Medium
            color: Theme.danger
        }

        Text {
            width: Math.min(implicitWidth, note.widest - 2 * 14 - 18)
            text: note.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 4
            elide: Text.ElideRight
            font.family: Theme.fontFamily
            font.pixelSize: 12
            font.weight: Font.Medium
            color: Theme.textPrimary
        }
    }
}
