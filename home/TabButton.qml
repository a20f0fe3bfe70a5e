import QtQuick
import QtQuick.Templates as T
import Velmor.Controls
import Velmor.Home

// The content has ids, so that it is made at once.
// qmllint disable deferred-property-id

// One tab of the card. That of the user's presets keeps one width, whatever the preset is called,
// and has a chevron while it is in force, which opens the menu of presets.
T.TabButton {
    id: tab

    required property BaseWidget base
    required property string title

    readonly property bool selected: title === base.tab
    readonly property bool ofPresets: title === "Preset"
    readonly property bool hasChevron: selected && ofPresets && base.presetNames.length > 0
    readonly property bool keyboardInside: visualFocus || chevron.visualFocus

    objectName: "tab" + title
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 16
    verticalPadding: 11
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    // Which tab is in force is the model's affair.
    checkable: false
    text: ofPresets ? base.presetName : base.tabLabel(title)
    font.family: Theme.fontFamily
    font.pixelSize: 14
    font.weight: Font.Medium
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: event => event.isAutoRepeat || clicked()
    Keys.onEnterPressed: event => event.isAutoRepeat || clicked()
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
            color: tab.selected ? "#FFFFFF" : Theme.textPrimary
            elide: tab.ofPresets ? Text.ElideRight : Text.ElideNone
            horizontalAlignment: Text.AlignHCenter
        }
    }

    FocusRing {
        shown: tab.visualFocus
        parentRadius: tab.height / 2
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
        onClicked: tab.base.showPresetMenu = !tab.base.showPresetMenu

        PresetMenu {
            objectName: "presetMenu"
            base: tab.base
            current: tab.hasChevron
            byKeyboard: chevron.visualFocus
        }
    }
}
