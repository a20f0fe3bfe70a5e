import QtQuick
import Velmor.Controls

// The window's buttons: close, minimise, and a third that does nothing. All symbols show while the
// pointer is over any part of the row.
Item {
    id: lights

    signal closeClicked
    signal minimiseClicked

    readonly property bool hovering: pointer.hovered

    component Light: PlainButton {
        id: light

        required property color disc
        property bool hovering: false

        implicitWidth: 12
        implicitHeight: 12
        radius: 6
        contentItem: Item {
            Icon {
                anchors.centerIn: parent
                visible: light.hovering || light.visualFocus
                name: light.symbol
                size: 7
                weight: Font.Bold
                color: Qt.rgba(0, 0, 0, 0.55)
            }
        }
        background: RoundedBox {
            radius: 6
            color: light.down ? Qt.darker(light.disc, 1.1) : light.disc
            lineWidth: 0.5
            lineColor: Qt.rgba(0, 0, 0, 0.12)
        }
    }

    implicitWidth: row.width + 24
    implicitHeight: row.height + 24

    HoverHandler {
        id: pointer
    }

    Row {
        id: row

        x: 12
        y: 12
        spacing: 8

        Light {
            objectName: "closeLight"
            disc: "#FF5F57"
            hovering: lights.hovering
            symbol: "close"
            Accessible.name: qsTr("Quit")
            onClicked: lights.closeClicked()
        }

        Light {
            objectName: "minimiseLight"
            disc: "#FEBC2E"
            hovering: lights.hovering
            symbol: "minimise"
            Accessible.name: qsTr("Minimise")
            onClicked: lights.minimiseClicked()
        }

        RoundedBox {
            width: 12
            height: 12
            radius: 6
            color: "#E3E2E7"
            lineWidth: 0.5
            lineColor: Qt.rgba(0, 0, 0, 0.08)
        }
    }
}
