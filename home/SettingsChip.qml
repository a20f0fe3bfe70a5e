import QtQuick
import Velmor.Controls

// One setting in the bubble. A click leads to all of them.
PlainButton {
    id: chip

    objectName: "chip"
    horizontalPadding: 9
    verticalPadding: 3
    radius: height / 2
    color: Theme.accent
    font.pointSize: Theme.points(10.5)
    font.weight: Font.DemiBold
    hint: qsTr("Scan settings")

    background: RoundedBox {
        radius: height / 2
        color: Qt.alpha(Theme.accent, 0.1)
    }
}
