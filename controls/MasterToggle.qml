import QtQuick
import Velmor.Controls

// A switch for a group of things: off, partly on, on. It shows `toggleState` and never changes it:
// a click asks the owner, by `clicked`.
PlainButton {
    id: toggle

    property int toggleState: ToggleState.Off

    radius: height / 2
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: toggleState === ToggleState.On
    Accessible.checkStateMixed: toggleState === ToggleState.Partial

    contentItem: ToggleTrack {
        position: toggle.toggleState / 2
        color: {
            switch (toggle.toggleState) {
            case ToggleState.On:
                return Theme.accent;
            case ToggleState.Partial:
                return Qt.alpha(Theme.accent, 0.4);
            default:
                return Theme.switchOff;
            }
        }
    }
}
