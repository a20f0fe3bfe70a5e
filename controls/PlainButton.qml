import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// A button without a frame: an icon, a text, or both, and whatever its owner puts in their place.
//
// Its whole rectangle is clickable; give it a size or a padding for that. All other buttons here
// are made of it. Space, Return and Enter act like a click, and the ring around it is for those who
// came by the keyboard.
T.AbstractButton {
    id: button

    property string symbol
    property real symbolSize: 14
    property int symbolWeight: Font.Normal
    property color color: Theme.textPrimary
    // The tool tip, which also names a button without a text for those who don't see it.
    property string hint
    // Corners of the focus ring.
    property real radius: Math.min(6, height / 2)
    // For one that can't be used now. 1 where the owner dims a whole group.
    property real disabledOpacity: Theme.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight, implicitContentHeight + topPadding + bottomPadding)
    spacing: 4
    hoverEnabled: true
    opacity: enabled ? 1 : disabledOpacity
    font.family: Theme.fontFamily

    Accessible.name: text || hint
    Accessible.description: text ? hint : ""
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()

    onPressed: hintLoader.spent = true

    Keys.onReturnPressed: event => event.isAutoRepeat || clicked()
    Keys.onEnterPressed: event => event.isAutoRepeat || clicked()

    contentItem: SymbolText {
        symbol: button.symbol
        symbolSize: button.symbolSize
        symbolWeight: button.symbolWeight
        text: button.text
        font: button.font
        color: button.color
        spacing: button.spacing
    }

    FocusRing {
        shown: button.visualFocus
        parentRadius: button.radius
    }

    // Most hints are never seen, so they are made when the pointer comes.
    Loader {
        id: hintLoader

        readonly property Hint tip: item as Hint
        // Who has pressed the button knows it: the tip waits for the next visit.
        property bool spent: false

        active: button.hint !== "" && (button.hovered || button.visualFocus)
        onActiveChanged: spent = false
        sourceComponent: Hint {}
        onLoaded: {
            tip.parent = button;
            tip.text = Qt.binding(() => button.hint);
            tip.visible = Qt.binding(() => !hintLoader.spent);
        }
    }
}
