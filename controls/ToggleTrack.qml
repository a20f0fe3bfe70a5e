import QtQuick
import Velmor.Controls

// What a switch looks like: a knob on a track. `position` is the knob's place, 0 at the left end and
// 1 at the right. Track and knob move together.
Item {
    id: track

    property alias color: groove.color
    property real position: 0

    implicitWidth: 38
    implicitHeight: 22

    RoundedBox {
        id: groove

        anchors.fill: parent
        radius: height / 2

        Behavior on color {
            enabled: !Motion.reduced

            ColorAnimation {
                duration: 180
                easing.type: Easing.BezierSpline
                easing.bezierCurve: Theme.easeInOut
            }
        }
    }

    SoftShadow {
        anchors.fill: knob
        radius: knob.radius
        blur: 1
        offsetY: 0.5
        color: Qt.rgba(0, 0, 0, 0.15)
    }

    RoundedBox {
        id: knob

        x: 2 + track.position * (track.width - width - 4)
        y: 2
        width: 18
        height: 18
        radius: 9
        color: "#FFFFFF"

        Behavior on x {
            enabled: !Motion.reduced

            NumberAnimation {
                duration: 180
                easing.type: Easing.BezierSpline
                easing.bezierCurve: Theme.easeInOut
            }
        }
    }
}
