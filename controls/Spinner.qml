import QtQuick
import QtQuick.Window
import Velmor.Controls

// Work is under way, and nobody knows for how long. It turns only while it can be seen.
Item {
    id: spinner

    property color color: Theme.textSecondary
    property bool running: true

    implicitWidth: 16
    implicitHeight: 16
    visible: running
    Accessible.role: Accessible.Animation
    Accessible.name: qsTr("Busy")
    Accessible.ignored: !visible

    Arc {
        id: arc

        anchors.centerIn: parent
        width: Math.min(spinner.width, spinner.height) - 2
        height: width
        part: 0.8
        thickness: Math.max(1.5, width / 8)
        color: spinner.color
        tail: true

        // With reduced motion it goes on: nothing else tells that the work does.
        RotationAnimator {
            target: arc
            running: spinner.visible && spinner.Window.visibility !== Window.Hidden
            from: 0
            to: 360
            duration: 900
            loops: Animation.Infinite
        }
    }
}
