import QtQuick
import Velmor.Controls
import Velmor.Home

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// The part of the window below the card: a hairline and the advanced panel, on white. It opens
// downwards and fades; the panel lives only while some of it can be seen.
Item {
    id: drawer

    required property AppModel model
    property bool shown: false

    // 0 closed, 1 open.
    property real opening: shown ? 1 : 0

    height: content.active ? content.height * opening : 0
    opacity: opening
    clip: true

    Behavior on opening {
        enabled: !Motion.reduced

        NumberAnimation {
            duration: 220
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Theme.easeOut
        }
    }

    Rectangle {
        anchors.fill: parent
        anchors.bottomMargin: ends.radius
        color: "#FFFFFF"
    }

    RoundedBox {
        id: ends

        anchors.bottom: parent.bottom
        width: parent.width
        height: 2 * radius
        radius: Theme.cardRadius
    }

    Loader {
        id: content

        width: parent.width
        active: drawer.opening > 0

        sourceComponent: Column {
            topPadding: 4
            bottomPadding: 24

            Rectangle {
                objectName: "hairline"
                width: parent.width
                height: 1
                color: Qt.rgba(0, 0, 0, 0.08)
            }

            Item {
                width: 1
                height: 16
            }

            AdvancedPanelView {
                objectName: "advancedPanel"
                x: 28
                width: parent.width - 56
                model: drawer.model
                enabled: drawer.shown
            }
        }
    }
}
