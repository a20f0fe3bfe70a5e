import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// A scroll bar that lies over what it scrolls. It shows which share of a whole is in view, and
// where that starts, both from 0 to 1, and asks for another start when it's dragged.
T.ScrollBar {
    id: bar

    property real start: 0
    property real share: 1

    signal moved(start: real)

    readonly property real thickness: hovered || pressed ? 8 : 5

    implicitWidth: 12
    implicitHeight: 12
    padding: 2
    minimumSize: 0.06
    visible: share < 0.9999
    size: share
    // The template's own position is what a drag leaves behind.
    onStartChanged: if (!pressed)
        position = start
    onPositionChanged: if (pressed)
        moved(position)
    onPressedChanged: if (!pressed)
        position = start
    focusPolicy: Qt.NoFocus
    Accessible.ignored: true

    contentItem: Item {
        implicitWidth: 8
        implicitHeight: 8

        Rectangle {
            x: bar.orientation === Qt.Vertical ? parent.width - width : 0
            y: bar.orientation === Qt.Horizontal ? parent.height - height : 0
            width: bar.orientation === Qt.Vertical ? bar.thickness : parent.width
            height: bar.orientation === Qt.Horizontal ? bar.thickness : parent.height
            radius: bar.thickness / 2
            color: Qt.alpha(Theme.textPrimary, bar.pressed ? 0.5 : 0.28)
        }
    }
}
