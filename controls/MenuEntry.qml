import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// One line of a `ContextMenu`.
T.MenuItem {
    id: entry

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 10
    verticalPadding: 5
    opacity: enabled ? 1 : Theme.disabledOpacity
    font.family: Theme.fontFamily
    font.pixelSize: 13

    contentItem: Text {
        text: entry.text
        font: entry.font
        color: entry.highlighted ? "#FFFFFF" : Theme.textPrimary
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }

    background: RoundedBox {
        radius: 6
        color: !entry.highlighted ? "transparent" : entry.down ? Theme.accentPressed : Theme.accent
    }
}
