import QtQuick
import Velmor.Controls

// Panes, and what opens above the others.
SampleRow {
    id: panes

    title: "GlassCard; click for Popover and ContextMenu"

    GlassCard {
        padding: 20

        Text {
            text: "A card of frosted glass"
            font.family: Theme.fontFamily
            font.pixelSize: 13
            color: Theme.textPrimary
        }
    }

    PillButton {
        text: "Popover"
        onClicked: popover.visible ? popover.close() : popover.open()

        Popover {
            id: popover

            Column {
                spacing: 10

                TextBox {
                    placeholderText: "Preset name"
                }

                PillButton {
                    anchors.right: parent.right
                    text: "Save"
                    filled: true
                }
            }
        }
    }

    PillButton {
        text: "Menu"
        onClicked: menu.popup()

        ContextMenu {
            id: menu

            MenuEntry {
                text: "First entry"
            }

            MenuEntry {
                text: "Second, longer entry"
            }

            MenuEntry {
                text: "Disabled entry"
                enabled: false
            }
        }
    }
}
