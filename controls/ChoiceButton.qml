import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// One of several choices: a radio button, whatever its owner makes it look like. It shows
// `selected`, which its owner keeps; a click asks for a change and makes none. Space, Return and
// Enter act like a click, and the ring around it is for those who came by the keyboard.
T.RadioButton {
    id: choice

    property bool selected: false
    // Corners of the focus ring.
    property real radius: Math.min(6, height / 2)

    function showState() {
        checked = Qt.binding(() => selected);
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    autoExclusive: false
    font.family: Theme.fontFamily

    Accessible.name: text
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    Keys.onReturnPressed: event => event.isAutoRepeat || clicked()
    Keys.onEnterPressed: event => event.isAutoRepeat || clicked()
    // The template has just flipped it.
    onToggled: showState()
    Component.onCompleted: showState()

    FocusRing {
        shown: choice.visualFocus
        parentRadius: choice.radius
    }
}
