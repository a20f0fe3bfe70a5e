import QtQuick
import Velmor.Controls

// The heading of a section of settings.
Text {
    topPadding: 2
    font.family: Theme.fontFamily
    font.pixelSize: 10
    font.weight: Font.DemiBold
    font.letterSpacing: 1.2
    color: Qt.alpha(Theme.textSecondary, 0.8)
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
