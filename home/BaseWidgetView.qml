import QtQuick
import Velmor.Controls
import Velmor.Home

// The card: brand, tabs with their bubble, round button and bottom bar.
Item {
    id: view

    required property AppModel model

    readonly property alias statusText: area.statusText

    implicitHeight: column.height

    BaseWidget {
        id: base

        model: view.model
    }

    Column {
        id: column

        x: 30
        width: parent.width - 60
        topPadding: 28
        bottomPadding: 14
        spacing: 14

        Row {
            objectName: "brandRow"
            anchors.horizontalCenter: parent.horizontalCenter
            bottomPadding: 4
            spacing: 9

            BrandMark {
                id: mark

                objectName: "brandMark"
            }

            Text {
                objectName: "brandName"
                height: mark.height
                verticalAlignment: Text.AlignVCenter
                text: "VELMOR"
                font.family: Theme.fontFamily
                font.pixelSize: 18
                font.weight: Font.DemiBold
                font.letterSpacing: 2
                color: Theme.textPrimary
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
        }

        // Above what follows: the round button's shadow would tint the bubble.
        PresetControl {
            objectName: "presetControl"
            z: 1
            width: parent.width
            base: base
        }

        ScanAreaView {
            id: area

            objectName: "scanArea"
            width: parent.width
            height: 104
            model: view.model
        }

        BottomBar {
            objectName: "bottomBar"
            width: parent.width
            base: base
        }
    }
}
