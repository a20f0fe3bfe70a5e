import QtQuick
import Velmor.Controls

// A switch in all but its look, which shows a state that its owner keeps: a check box for those who
// don't see it. A click asks for a change and makes none.
PlainButton {
    id: button

    property int checkState: Qt.Unchecked

    function showState() {
        checked = Qt.binding(() => checkState === Qt.Checked);
    }

    checkable: true
    Accessible.checkable: true
    Accessible.checked: checkState === Qt.Checked
    Accessible.checkStateMixed: checkState === Qt.PartiallyChecked
    // The template has just flipped it.
    onToggled: showState()
    Component.onCompleted: showState()
}
