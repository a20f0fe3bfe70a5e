import QtQuick
import Velmor.Controls

// How much of a work is done, as a thin ring: `value` from 0 to 1.
Item {
    id: ring

    property real value: 0
    property real thickness: 2
    property color color: Theme.accent
    property color trackColor: Qt.alpha(Theme.accent, 0.15)

    implicitWidth: 16
    implicitHeight: 16
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("%1 %").arg(Math.round(value * 100))

    Arc {
        anchors.fill: parent
        thickness: ring.thickness
        color: ring.trackColor
    }

    Arc {
        anchors.fill: parent
        thickness: ring.thickness
        color: ring.color
        part: ring.value
    }
}
