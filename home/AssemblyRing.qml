import QtQuick
import Velmor.Controls

// How far the making of a PDF has come: a thin ring around the round button, and the page in words.
Item {
    id: ring

    property bool shown: false
    property real value: 0
    property string text

    width: 104
    height: 104
    opacity: shown ? 1 : 0
    visible: opacity > 0

    Behavior on opacity {
        NumberAnimation {
            duration: 200
        }
    }

    ProgressRing {
        anchors.fill: parent
        thickness: 2.5
        value: ring.value
        Accessible.name: ring.text
    }

    Item {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.verticalCenter: parent.top
        anchors.verticalCenterOffset: 1
        width: label.width
        height: label.height

        SoftShadow {
            anchors.fill: parent
            radius: height / 2
            blur: 4
            offsetY: 1
            color: Qt.rgba(0, 0, 0, 0.12)
        }

        RoundedBox {
            anchors.fill: parent
            radius: height / 2
            color: "#FFFFFF"
        }

        Text {
            id: label

            leftPadding: 8
            rightPadding: 8
            topPadding: 2
            bottomPadding: 2
            text: ring.text
            font.family: Theme.fontFamily
            font.pixelSize: 10
            font.weight: Font.Medium
            color: Theme.textSecondary
            Accessible.ignored: true
        }
    }
}
