import QtQuick
import Velmor.Controls

// What is switched, picked, typed and waited for.
Column {
    id: samples

    readonly property var modes: [
        {
            label: "Auto",
            value: 0
        },
        {
            label: "Colour",
            value: 1
        },
        {
            label: "Grey",
            value: 2
        },
        {
            label: "B/W",
            value: 3
        }
    ]

    spacing: 20

    SampleRow {
        title: "SegmentedPill: normal, compact, nothing selected"

        SegmentedPill {
            width: 300
            options: samples.modes
            selection: 1
            onPicked: value => selection = value
        }

        SegmentedPill {
            width: 260
            compact: true
            options: samples.modes
            selection: 0
            onPicked: value => selection = value
        }

        SegmentedPill {
            compact: true
            options: samples.modes
            onPicked: value => selection = value
        }
    }

    SampleRow {
        title: "MasterToggle: off, partial, on; BinaryToggle: off, on, disabled; CheckMark"

        MasterToggle {
            onClicked: toggleState = ToggleState.On
        }

        MasterToggle {
            toggleState: ToggleState.Partial
            onClicked: toggleState = ToggleState.On
        }

        MasterToggle {
            toggleState: ToggleState.On
            onClicked: toggleState = ToggleState.Off
        }

        BinaryToggle {
            onSwitched: on => isOn = on
        }

        BinaryToggle {
            isOn: true
            onSwitched: on => isOn = on
        }

        BinaryToggle {
            isOn: true
            enabled: false
        }

        CheckMark {
            text: "Include save-to folder"
        }

        CheckMark {
            text: "Checked"
            checked: true
        }

        CheckMark {
            text: "Disabled"
            checked: true
            enabled: false
        }
    }

    SampleRow {
        title: "TextBox: empty, with text; Spinner; ProgressRing at 0, 40 and 100 %"

        TextBox {
            placeholderText: "Preset name"
        }

        TextBox {
            width: 150
            text: "Receipts"
        }

        Spinner {}

        Spinner {
            width: 32
            height: 32
            color: Theme.accent
        }

        ProgressRing {}

        ProgressRing {
            value: 0.4
        }

        ProgressRing {
            value: 1
        }

        ProgressRing {
            width: 40
            height: 40
            value: 0.4
        }
    }
}
