import QtQuick
import Velmor.Controls

// A message that comes in from the bottom edge of its parent and leaves the same way. It keeps its
// text while it leaves.
Item {
    id: toast

    property string text
    property bool shown: false

    Accessible.role: Accessible.Notification
    Accessible.name: text
    Accessible.ignored: !shown

    anchors.horizontalCenter: parent.horizontalCenter
    width: label.width
    height: label.height
    y: parent.height - (height + 12) * way.value
    opacity: Math.min(1, way.value)
    visible: way.value > 0.001

    Spring {
        id: way

        to: toast.shown ? 1 : 0
        response: 0.35
        damping: 0.85
    }

    SoftShadow {
        anchors.fill: parent
        radius: plate.radius
        blur: 8
        offsetY: 3
        color: Qt.rgba(0, 0, 0, 0.25)
        hollow: true
    }

    RoundedBox {
        id: plate

        anchors.fill: parent
        radius: Math.min(height / 2, 18)
        color: Qt.rgba(0, 0, 0, 0.82)
    }

    Text {
        id: label

        // The parent's width, but for a little air.
        width: Math.min(implicitWidth, toast.parent.width - 24)
        leftPadding: 14
        rightPadding: 14
        topPadding: 8
        bottomPadding: 8
        text: toast.text
        font.family: Theme.fontFamily
        font.pixelSize: 12
        font.weight: Font.Medium
        color: "#FFFFFF"
        wrapMode: Text.Wrap
        maximumLineCount: 4
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
    }
}
