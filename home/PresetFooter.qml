import QtQuick
import Velmor.Controls
import Velmor.Home

// The end of the panel: the button that keeps the present settings as a preset, dim while there is
// nothing to keep.
Item {
    id: footer

    required property AdvancedPanel panel

    implicitHeight: button.height + 10
    enabled: panel.modified
    opacity: enabled ? 1 : 0.35

    PlainButton {
        id: button

        objectName: "saveAsPreset"
        anchors.right: parent.right
        y: 10
        horizontalPadding: 14
        verticalPadding: 6
        radius: height / 2
        text: qsTr("Save as preset…")
        font.pixelSize: 12
        color: Theme.accent
        disabledOpacity: 1
        onClicked: footer.panel.showPresetSave = true

        background: RoundedBox {
            radius: height / 2
            color: "transparent"
            lineWidth: 1
            lineColor: Qt.alpha(Theme.accent, 0.45)
        }

        PresetSavePopover {
            objectName: "presetSave"
            panel: footer.panel
        }
    }
}
