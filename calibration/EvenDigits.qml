import QtQuick
import Velmor.Controls

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// A number at the right edge, its digits all equally wide: it doesn't tremble while it changes. A
// font's own even digits can't be asked for with this Qt.
Item {
    id: number

    property string text

    implicitHeight: digits.height

    TextMetrics {
        id: widest

        font: sample.font
        text: "0"
    }

    Text {
        id: sample

        visible: false
        font.family: Theme.fontFamily
        font.pixelSize: 11
    }

    Row {
        id: digits

        anchors.right: parent.right

        Repeater {
            model: number.text.split("")

            Text {
                required property string modelData

                width: Math.ceil(widest.advanceWidth)
                horizontalAlignment: Text.AlignHCenter
                text: modelData
                font: sample.font
                color: Theme.textSecondary
            }
        }
    }
}
