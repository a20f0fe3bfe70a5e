import QtQuick
import Velmor.Controls

// A symbol in the tool bar, without a frame. The focus stays on the page when it's clicked.
PlainButton {
    id: button

    width: 24
    height: 22
    symbolSize: 12
    symbolWeight: Font.Medium
    focusPolicy: Qt.TabFocus

    background: RoundedBox {
        radius: 5
        color: button.hovered ? Qt.rgba(0, 0, 0, 0.05) : "transparent"
    }
}
