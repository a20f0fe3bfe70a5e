import QtQuick
import QtQuick.Layouts
import Velmor.Controls

// The content has ids, so that it is made at once.
// qmllint disable deferred-property-id

// One preset in the menu. The button that deletes it shows while the pointer is on the row, or the
// keyboard's focus.
ChoiceButton {
    id: row

    required property string name

    signal chosen
    signal deleteRequested(bool byKeyboard)

    readonly property bool hovering: pointer.hovered
    readonly property bool active: hovering || visualFocus || trash.visualFocus

    leftPadding: 14
    rightPadding: 8
    verticalPadding: 7
    radius: 9
    text: name
    onClicked: chosen()
    Keys.onDeletePressed: deleteRequested(true)
    Keys.onDownPressed: nextItemInFocusChain(true).nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    Keys.onUpPressed: nextItemInFocusChain(false).nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

    HoverHandler {
        id: pointer
    }

    background: RoundedBox {
        radius: 9
        color: row.hovering ? Theme.track : "transparent"
    }

    contentItem: RowLayout {
        id: line

        spacing: 10

        Text {
            Layout.fillWidth: true
            Layout.preferredWidth: Math.min(implicitWidth, 200)
            // What the row can spare lies here, at least 12 points and the spacing on both sides.
            Layout.rightMargin: 12 + line.spacing
            text: row.name
            elide: Text.ElideRight
            font.family: Theme.fontFamily
            font.pointSize: Theme.points(13.5)
            font.weight: row.selected ? Font.DemiBold : Font.Normal
            color: Theme.textPrimary
        }

        Icon {
            visible: row.selected
            name: "check"
            size: 11
            weight: Font.DemiBold
            color: Theme.accent
        }

        PlainButton {
            id: trash

            objectName: "deletePreset"
            implicitWidth: 20
            implicitHeight: 20
            opacity: row.active ? 1 : 0
            symbol: "delete"
            symbolSize: 11
            symbolWeight: Font.Medium
            color: Theme.textSecondary
            hint: qsTr("Delete preset")
            Accessible.name: qsTr("Delete preset %1").arg(row.name)
            onClicked: row.deleteRequested(visualFocus)
        }
    }
}
