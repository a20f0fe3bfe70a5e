import QtQuick
import Velmor.Controls

// Buttons at rest, pressed, disabled and with the focus ring.
Column {
    spacing: 20

    SampleRow {
        title: "ScanButton: at rest, pressed, with focus ring"

        ScanButton {
            symbol: "stop"
            symbolSize: 26
        }

        ScanButton {
            symbol: "stop"
            symbolSize: 26
            down: true
        }

        ScanButton {
            symbol: "scan-page"
            symbolSize: 30
            symbolWeight: Font.Medium

            FocusRing {
                shown: true
                parentRadius: 42
            }
        }
    }

    SampleRow {
        title: "PillButton: filled, pressed, disabled; with outline, with icon, disabled"

        PillButton {
            text: "Apply"
            filled: true
        }

        PillButton {
            text: "Apply"
            filled: true
            down: true
        }

        PillButton {
            text: "Apply"
            filled: true
            enabled: false
        }

        PillButton {
            text: "Cancel"
        }

        PillButton {
            text: "Auto"
            symbol: "auto"
            symbolSize: 13
        }

        PillButton {
            text: "Undo box"
            enabled: false
        }
    }

    SampleRow {
        title: "PlainButton: icon, text, both, disabled, with focus ring"

        PlainButton {
            padding: 6
            symbol: "settings"
            symbolSize: 19
            symbolWeight: Font.DemiBold
            color: Theme.textSecondary
            hint: "Settings"
        }

        PlainButton {
            padding: 6
            symbol: "scans"
            symbolSize: 21
            symbolWeight: Font.DemiBold
            color: Theme.accent
            hint: "My scans"
        }

        PlainButton {
            padding: 6
            text: "Change…"
            font.pixelSize: 12
            color: Theme.accent
        }

        PlainButton {
            padding: 6
            symbol: "copy"
            text: "Copy"
            font.pixelSize: 12
        }

        PlainButton {
            padding: 6
            symbol: "delete"
            text: "Delete"
            font.pixelSize: 12
            enabled: false
        }

        PlainButton {
            padding: 6
            symbol: "settings"
            symbolSize: 19

            FocusRing {
                shown: true
            }
        }
    }
}
