import QtQuick
import QtQuick.Templates as T
import Velmor.Controls
import Velmor.Home

// The round button: in colour and a little larger when a scanner is there, otherwise grey under a
// hint that says what is going on.
T.AbstractButton {
    id: button

    required property ScanArea area

    // 0 grey, 1 ready; beyond 1 while the spring swings.
    readonly property real readiness: change.value
    readonly property real shade: Math.max(0, Math.min(1, readiness))

    implicitWidth: Math.max(84, hint.width)
    implicitHeight: 84
    focusPolicy: Qt.StrongFocus
    Accessible.onPressAction: clicked()
    Accessible.name: area.ready ? qsTr("Scan") : area.hint
    Keys.onReturnPressed: event => event.isAutoRepeat || clicked()
    Keys.onEnterPressed: event => event.isAutoRepeat || clicked()

    // What can be clicked is what can be seen.
    containmentMask: QtObject {
        function contains(point: point): bool {
            const dx = point.x - button.width / 2;
            const dy = point.y - button.height / 2;
            return Math.hypot(dx, dy) <= 42 * disc.scale || !button.area.ready && Math.abs(dx) <= hint.width / 2 && Math.abs(dy) <= hint.height / 2;
        }
    }

    Spring {
        id: change

        to: button.area.ready ? 1 : 0
        response: 0.4
        damping: 0.72
    }

    Item {
        id: disc

        objectName: "disc"
        anchors.centerIn: parent
        width: 84
        height: 84
        scale: 1 + 0.1 * button.readiness

        SoftShadow {
            anchors.fill: parent
            visible: button.shade < 1
            opacity: 1 - button.shade
            radius: 42
            blur: 22
            offsetY: 10
            color: Qt.rgba(0, 0, 0, 0.18)
        }

        SoftShadow {
            anchors.fill: parent
            visible: button.shade > 0
            opacity: button.shade
            radius: 42
            blur: 38
            offsetY: 16
            color: Qt.alpha(Theme.accent, 0.55)
        }

        Disc {
            objectName: "circle"
            anchors.fill: parent
            color: "#E7E5F0"
            restScale: 1.1
        }

        Disc {
            anchors.fill: parent
            opacity: button.shade
            restScale: 1.1
            color: button.down ? Theme.accentPressed : Theme.accent
        }

        Icon {
            anchors.centerIn: parent
            opacity: button.shade
            name: "scan-page"
            size: 30
            weight: Font.Medium
            restScale: 1.1
            color: "#FFFFFF"
        }

        FocusRing {
            shown: button.visualFocus
            parentRadius: 42
        }
    }

    ScannerHint {
        id: hint

        objectName: "hint"
        anchors.centerIn: parent
        opacity: 1 - button.shade
        visible: opacity > 0
        text: button.area.hint
        searching: button.area.searching
    }
}
