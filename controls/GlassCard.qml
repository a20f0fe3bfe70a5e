import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// A frosted pane with a thin light edge and a soft shadow, around its content.
T.Pane {
    id: card

    property real radius: Theme.cardRadius

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    contentWidth: contentChildren.length === 1 ? contentChildren[0].implicitWidth : 0
    contentHeight: contentChildren.length === 1 ? contentChildren[0].implicitHeight : 0

    background: Item {
        SoftShadow {
            anchors.fill: parent
            radius: card.radius
            blur: 18
            offsetY: 10
            color: Qt.alpha(Theme.cardShadow, 0.1)
            hollow: true
        }

        RoundedBox {
            anchors.fill: parent
            radius: card.radius
            color: Theme.frost
            lineWidth: 0.5
            lineColor: Qt.rgba(1, 1, 1, 0.6)
        }
    }
}
