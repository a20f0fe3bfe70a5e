import QtQuick
import Velmor.Controls

// A setting that is on or off. It shows `isOn`; its owner decides what `switched` does.
TitledRow {
    id: row

    property alias isOn: toggle.isOn

    signal switched(bool on)

    BinaryToggle {
        id: toggle

        Accessible.name: row.title
        Accessible.description: row.subtitle
        onSwitched: on => row.switched(on)
    }
}
