import QtQuick
import Velmor.Controls

// A button in the form of a capsule: the main action filled, others with a light outline.
PlainButton {
    id: button

    property bool filled: false

    horizontalPadding: 18
    verticalPadding: 10
    radius: height / 2
    color: filled ? "#FFFFFF" : Theme.textPrimary
    symbolSize: 14
    symbolWeight: Font.Medium
    font.pixelSize: 14
    font.weight: Font.Medium

    background: RoundedBox {
        radius: button.radius
        color: !button.filled ? "transparent" : button.down ? Theme.accentPressed : Theme.accent
        lineWidth: button.filled ? 0 : 0.5
        lineColor: Qt.rgba(1, 1, 1, 0.7)
    }
}
