import QtQuick
import Velmor.Controls
import Velmor.Home

// The list of the user's presets, to choose from and to delete.
Popover {
    id: menu

    required property BaseWidget base
    property bool byKeyboard: false

    padding: 8
    visible: base.showPresetMenu
    onClosed: base.showPresetMenu = false
    onOpened: {
        if (byKeyboard)
            rows.itemAt(Math.max(0, base.presetNames.indexOf(base.activePreset)))?.forceActiveFocus(Qt.TabFocusReason);
    }

    contentItem: Flickable {
        implicitWidth: Math.max(190 - 2 * menu.padding, column.implicitWidth)
        implicitHeight: Math.min(column.implicitHeight, 236)
        contentHeight: column.height
        clip: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height

        Column {
            id: column

            width: parent.width
            spacing: 2

            Repeater {
                id: rows

                model: menu.base.presetNames

                PresetMenuRow {
                    required property int index
                    required property string modelData

                    objectName: "presetRow" + index
                    width: column.width
                    name: modelData
                    selected: name === menu.base.activePreset
                    onChosen: menu.base.choosePreset(name)
                    // The rows are made anew: the next one takes the place of this.
                    onDeleteRequested: byKeyboard => {
                        const place = index;
                        const list = rows;
                        menu.base.deletePreset(name);
                        if (byKeyboard)
                            list.itemAt(Math.min(place, list.count - 1))?.forceActiveFocus(Qt.TabFocusReason);
                    }
                }
            }
        }
    }
}
