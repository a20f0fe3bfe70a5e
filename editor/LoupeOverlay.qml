import QtQuick
import Velmor.Controls
import Velmor.Editor

// The magnifier beside the pointer: the lens, and below it how light the marked pixel is. It takes
// no pointer input.
Item {
    id: overlay

    required property PageEditor editor

    visible: lens.isShown

    Item {
        id: column

        readonly property real spacing: 4
        // Of the lens; on the window's pixels, so that its blocks are sharp.
        readonly property point lensPlace: lens.onPixels(overlay, Qt.point(x - lens.rim, y - lens.rim))

        width: lens.diameter
        height: lens.diameter + spacing + label.height
        x: lens.center.x - width / 2
        y: lens.center.y - height / 2

        SoftShadow {
            width: lens.diameter
            height: lens.diameter
            radius: lens.diameter / 2
            blur: 6
            offsetY: 2
            color: Qt.rgba(0, 0, 0, 0.3)
        }

        LoupeLens {
            id: lens

            x: column.lensPlace.x - column.x
            y: column.lensPlace.y - column.y
            editor: overlay.editor
        }

        RoundedBox {
            id: label

            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            width: readout.width + 12
            height: readout.height + 4
            radius: height / 2
            color: Theme.frost

            DigitsText {
                id: readout

                anchors.centerIn: parent
                text: overlay.editor.loupeLabel
                font.pixelSize: 10
                font.weight: Font.DemiBold
                color: Theme.textPrimary
            }
        }
    }
}
