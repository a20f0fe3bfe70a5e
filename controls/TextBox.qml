import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// A field for one line of text, with a rounded border. `placeholderText` is what it asks for while
// it's empty.
T.TextField {
    id: box

    // Came the focus by the keyboard? A pointer needs no ring: it sees the caret.
    readonly property bool visualFocus: {
        const byKey = focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason;
        return activeFocus && (byKey || focusReason === Qt.ShortcutFocusReason);
    }

    implicitWidth: 190
    implicitHeight: Math.ceil(contentHeight) + topPadding + bottomPadding
    leftPadding: 7
    rightPadding: 7
    topPadding: 4
    bottomPadding: 4
    font.family: Theme.fontFamily
    font.pixelSize: 13
    color: Theme.textPrimary
    selectionColor: Qt.alpha(Theme.accent, 0.25)
    selectedTextColor: Theme.textPrimary
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.name: placeholderText

    Text {
        x: box.leftPadding
        width: box.width - box.leftPadding - box.rightPadding
        height: box.height
        visible: box.length === 0 && box.preeditText === ""
        text: box.placeholderText
        font: box.font
        color: Theme.textSecondary
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }

    background: RoundedBox {
        radius: 6
        color: "#FFFFFF"
        lineWidth: 1
        lineColor: Qt.rgba(0, 0, 0, 0.14)

        FocusRing {
            shown: box.visualFocus
            parentRadius: 6
            gap: 0
        }
    }
}
