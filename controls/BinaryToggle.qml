import QtQuick
import Velmor.Controls

// A switch. It shows `isOn`; a click asks the owner by `switched` for the other value.
StatefulButton {
    id: toggle

    property bool isOn: false

    signal switched(bool on)

    radius: height / 2
    checkState: isOn ? Qt.Checked : Qt.Unchecked
    onClicked: switched(!isOn)

    contentItem: ToggleTrack {
        position: toggle.isOn ? 1 : 0
        color: toggle.isOn ? Theme.accent : Theme.switchOff
    }
}
