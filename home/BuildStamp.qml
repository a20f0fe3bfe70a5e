import QtQuick
import Velmor.Controls

// When this program was built, in the corner and in small print. Its digits have even widths.
Row {
    id: stamp

    property string text

    topPadding: 9
    rightPadding: 12
    opacity: 0.55
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Repeater {
        model: stamp.text.split("")

        Text {
            id: character

            required property string modelData

            TextMetrics {
                id: digit

                font: character.font
                text: "0"
            }

            width: modelData >= "0" && modelData <= "9" ? digit.advanceWidth : implicitWidth
            horizontalAlignment: Text.AlignHCenter
            text: modelData
            font.family: Theme.fontFamily
            font.pixelSize: 9
            font.weight: Font.Medium
            color: Theme.textSecondary
            Accessible.ignored: true
        }
    }
}
