import QtQuick
import Velmor.Controls
import Velmor.Home

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// The bubble under the tabs: chips that tell what the tab pointed at sets. Its arrow slides along
// to `arrowAt`, the middle of that tab from the left edge.
Item {
    id: bubble

    required property BaseWidget base
    property real arrowAt: width / 2

    implicitHeight: card.y + card.height
    enabled: base.showBubble
    opacity: base.showBubble ? 1 : 0

    Behavior on opacity {
        NumberAnimation {
            duration: 250
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Theme.easeOut
        }
    }

    SoftShadow {
        anchors.fill: card
        radius: card.radius
        blur: 14
        offsetY: 5
        color: Qt.rgba(0, 0, 0, 0.18)
    }

    RoundedBox {
        id: card

        objectName: "bubbleCard"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 6 + 7
        width: row.width
        height: row.height
        radius: 12
        color: "#FFFFFF"

        // The outline lies on the edge, half of it outside.
        RoundedBox {
            anchors.fill: parent
            anchors.margins: -0.5
            radius: 12.5
            color: "transparent"
            lineWidth: 1
            lineColor: Qt.rgba(0, 0, 0, 0.06)
        }

        Row {
            id: row

            leftPadding: 10
            rightPadding: 10
            topPadding: 7
            bottomPadding: 7
            spacing: 6

            Repeater {
                // As many as there can be: made anew with each tab that is pointed at, they would lose
                // the keyboard's focus when it comes from a tab.
                model: 4

                SettingsChip {
                    required property int index

                    visible: index < bubble.base.chips.length
                    text: bubble.base.chips[index] ?? ""
                    onClicked: bubble.base.openSettings()
                }
            }
        }
    }

    ArrowHead {
        id: arrow

        objectName: "bubbleArrow"
        x: way.value - width / 2
        y: 6
        width: 16
        height: 7
        color: "#FFFFFF"

        Spring {
            id: way

            to: bubble.arrowAt
            response: 0.32
            damping: 0.85
        }
    }
}
