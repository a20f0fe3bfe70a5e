import QtQuick
import Velmor.Controls

// The ring around the control that the keyboard acts on. It fills its parent, lies a little outside
// of it, and takes no part in layout. `parentRadius` is that of its corners; `shown` is for those
// who came by the keyboard alone, as `visualFocus` of a control tells.
Rectangle {
    id: ring

    property bool shown: false
    property real parentRadius: 6
    property real gap: 2

    anchors.fill: parent
    anchors.margins: -gap - border.width
    visible: shown
    z: 1
    radius: parentRadius + gap + border.width
    color: "transparent"
    border.width: 2
    border.color: Qt.alpha(Theme.accent, 0.65)
}
