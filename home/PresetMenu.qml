import QtQuick
import QtQuick.Layouts
import Velmor.Controls
import Velmor.Home

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified
// The content has ids, so that it is made at once.
// qmllint disable deferred-property-id

// The list of the user's presets, to choose from and to delete.
Popover {
    id: menu

    required property BaseWidget base
    // Whether it belongs to the tab that has the chevron now.
    property bool current: true
    property bool byKeyboard: false
    // How it was opened this time: the focus has moved by the time that it is open.
    property bool openedByKeyboard: false

    padding: 8
    visible: current && base.showPresetMenu
    onClosed: {
        base.showPresetMenu = false;
        if (openedByKeyboard)
            parent.forceActiveFocus(Qt.TabFocusReason);
    }
    onAboutToShow: openedByKeyboard = byKeyboard
    onOpened: {
        let start = 0;
        for (let i = 0; i < rows.count; ++i) {
            if ((rows.itemAt(i) as PresetMenuRow)?.selected)
                start = i;
        }
        if (openedByKeyboard)
            rows.itemAt(start)?.forceActiveFocus(Qt.TabFocusReason);
    }

    contentItem: Flickable {
        implicitWidth: Math.max(190 - 2 * menu.padding, column.implicitWidth)
        implicitHeight: Math.min(column.implicitHeight, 190)
        contentHeight: column.height
        clip: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height

        ColumnLayout {
            id: column

            Accessible.role: Accessible.Grouping
            Accessible.name: qsTr("Presets")
            width: parent.width
            spacing: 2

            Repeater {
                id: rows

                model: menu.base.presetNames

                PresetMenuRow {
                    required property int index
                    required property string modelData

                    objectName: "presetRow" + index
                    Layout.fillWidth: true
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
