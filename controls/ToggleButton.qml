import QtQuick
import Velmor.Controls

// A button that shows whether what it opens and closes is open: a button that is pressed in or not
// for those who don't see it. It shows `isOn`; a click asks the owner, by `clicked`.
PlainButton {
    id: button

    property bool isOn: false

    // The template tells readers of a state only as a check box, and takes back what others say.
    function tellState() {
        Accessible.checkable = true;
        Accessible.checked = isOn;
    }

    Accessible.onCheckableChanged: tellState()
    Accessible.onCheckedChanged: tellState()
    onIsOnChanged: tellState()
    Component.onCompleted: tellState()
}
