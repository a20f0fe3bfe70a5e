import QtQuick
import Velmor.Controls
import Velmor.Home

// The content has ids, so that it is made at once.
// qmllint disable deferred-property-id

// Asks for the name of a new preset. Return in the field saves.
Popover {
    id: popover

    required property AdvancedPanel panel

    edge: Qt.TopEdge
    visible: panel.showPresetSave
    onClosed: panel.showPresetSave = false
    onOpened: field.forceActiveFocus(Qt.PopupFocusReason)

    contentItem: Column {
        spacing: 10

        TextBox {
            id: field

            objectName: "presetName"
            width: 190
            placeholderText: qsTr("Preset name")
            text: popover.panel.presetName
            focus: true
            onTextEdited: popover.panel.presetName = text
            onAccepted: popover.panel.savePreset()
        }

        CheckMark {
            objectName: "includeFolder"
            text: qsTr("Include save-to folder")
            checked: popover.panel.presetIncludesFolder
            onToggled: popover.panel.presetIncludesFolder = checked
        }

        PillButton {
            objectName: "savePreset"
            anchors.right: parent.right
            filled: true
            text: qsTr("Save")
            enabled: popover.panel.canSavePreset
            onClicked: popover.panel.savePreset()
        }
    }
}
