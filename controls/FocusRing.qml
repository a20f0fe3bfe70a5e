import QtQuick
import Velmor.Controls

// The ring around the control that the keyboard acts on. It fills its parent, lies a little outside
// of it, and takes no part in layout. `parentRadius` is that of its corners; `shown` is for those
// who came by the keyboard alone, as `visualFocus` of a control tells.
RoundedBox {
    id: ring

    property bool shown: false
    property real parentRadius: 6
    property real gap: 2
    readonly property real line: 2

    anchors.fill: parent
    anchors.margins: -gap - line
    visible: shown
    z: 1
    radius: parentRadius + gap + line
    color: "transparent"
    lineWidth: line
    lineColor: Qt.alpha(Theme.accent, 0.65)
}
