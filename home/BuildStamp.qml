import QtQuick
import Velmor.Controls

// When this program was built, in the corner and in small print.
Text {
    topPadding: 9
    rightPadding: 12
    font.family: Theme.fontFamily
    font.pixelSize: 9
    font.weight: Font.Medium
    font.features: ({"tnum": 1})
    color: Theme.textSecondary
    opacity: 0.55
}
