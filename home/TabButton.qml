import QtQuick
import Velmor.Controls
import Velmor.Home

// One tab of the card. That of the user's presets keeps one width, whatever the preset is called,
// and has a chevron while it is in force, which opens the menu of presets.
PlainButton {
    id: tab

    required property BaseWidget base
    required property string title

    readonly property bool selected: title === base.tab
    readonly property bool ofPresets: title === "Preset"
    readonly property bool hasChevron: selected && ofPresets && base.presetNames.length > 0
    readonly property bool keyboardInside: visualFocus || chevron.visualFocus

    objectName: "tab" + title
    horizontalPadding: 16
    verticalPadding: 11
    radius: height / 2
    text: ofPresets ? base.presetName : base.tabLabel(title)
    color: selected ? "#FFFFFF" : Theme.textPrimary
    font.pixelSize: 14
    font.weight: Font.Medium
    Accessible.role: Accessible.PageTab
    Accessible.selectable: true
    Accessible.selected: selected

    onClicked: base.clickTab(title)
    onHoveredChanged: follow(hovered || keyboardInside)
    onKeyboardInsideChanged: follow(hovered || keyboardInside)

    function follow(entered: bool) {
        if (entered)
            base.enterTab(title);
        else
            base.leaveTab(title);
    }

    contentItem: Item {
        implicitWidth: measure.implicitWidth + (tab.hasChevron ? 4 + 14 : 0)
        implicitHeight: measure.implicitHeight

        // The width of the tab.
        Text {
            id: measure

            visible: false
            text: tab.base.tabLabel(tab.title)
            font: tab.font
        }

        Text {
            width: measure.implicitWidth
            text: tab.text
            font: tab.font
            color: tab.color
            elide: tab.ofPresets ? Text.ElideRight : Text.ElideNone
            horizontalAlignment: Text.AlignHCenter
        }
    }

    PlainButton {
        id: chevron

        objectName: "chevron"
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 38
        visible: tab.hasChevron
        symbol: "chevron-down"
        symbolSize: 10
        symbolWeight: Font.DemiBold
        color: tab.selected ? Qt.rgba(1, 1, 1, 0.9) : Theme.textSecondary
        hint: qsTr("Choose a preset")
        Accessible.role: Accessible.ButtonMenu
        onClicked: tab.base.showPresetMenu = !tab.base.showPresetMenu

        PresetMenu {
            objectName: "presetMenu"
            base: tab.base
            byKeyboard: chevron.visualFocus
        }
    }
}
