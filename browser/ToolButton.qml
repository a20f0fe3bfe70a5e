import QtQuick
import Velmor.Controls

// A tool of the bar over the preview: a symbol with its label below it.
PlainButton {
    id: tool

    property string label
    // The key that does the same.
    property string keyHint
    // In place of the label in the tool tip.
    property string help

    // A long word of another language takes its room from the row, not from its neighbours.
    width: Math.max(44, Math.ceil(words.advanceWidth) + 4)
    height: 34
    text: label
    symbol: ""
    hint: (help || label) + (keyHint ? "  (" + keyHint + ")" : "")
    focusPolicy: Qt.TabFocus
    property string picture

    TextMetrics {
        id: words

        text: tool.label
        font.family: Theme.fontFamily
        font.pixelSize: 9
        font.weight: Font.DemiBold
    }

    contentItem: Item {
        Column {
            anchors.centerIn: parent
            spacing: 1

            Icon {
                anchors.horizontalCenter: parent.horizontalCenter
                name: tool.picture
                size: 14
                weight: Font.Medium
                color: tool.down ? Theme.accent : Theme.textPrimary
            }

            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: tool.label
                font.family: Theme.fontFamily
                font.pixelSize: 9
                font.weight: Font.DemiBold
                color: Theme.textSecondary
            }
        }
    }

    background: RoundedBox {
        radius: 6
        color: tool.hovered ? Qt.rgba(0, 0, 0, 0.05) : "transparent"
    }
}
