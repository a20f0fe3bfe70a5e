import QtQuick
import Velmor.Controls

// A switch for a group of things: off, partly on, on. It shows `toggleState` and never changes it:
// a click asks the owner, by `clicked`.
StatefulButton {
    id: toggle

    property int toggleState: ToggleState.Off

    radius: height / 2
    checkState: [Qt.Unchecked, Qt.PartiallyChecked, Qt.Checked][toggleState]

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
