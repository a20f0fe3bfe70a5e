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

    DigitsText {
        text: stamp.text
        font.pixelSize: 9
        font.weight: Font.Medium
        Accessible.ignored: true
    }
}
