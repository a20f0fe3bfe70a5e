import QtQuick
import QtQuick.Templates as T

// A button without a frame: an icon, a text, or both, and whatever its owner puts in their place.
//
// Its whole rectangle is clickable; give it a size or a padding for that. All other buttons here
// are made of it. Space, Return and Enter act like a click, and the ring around it is for those who
// came by the keyboard.
T.AbstractButton {
    id: button

    property string symbol
    property real symbolSize: 14
    property int symbolWeight: Font.Normal
    property color color: Theme.textPrimary
    // The tool tip, which also names a button without a text for those who don't see it.
    property string hint
    // Corners of the focus ring.
    property real radius: Math.min(6, height / 2)
    // For one that can't be used now. 1 where the owner dims a whole group.
    property real disabledOpacity: Theme.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight, implicitContentHeight + topPadding + bottomPadding)
    spacing: 4
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : disabledOpacity
    font.family: Theme.fontFamily
    font.pixelSize: 12

    Accessible.name: text || hint
    Accessible.description: text ? hint : ""

    Keys.onReturnPressed: event => event.isAutoRepeat || click()
    Keys.onEnterPressed: event => event.isAutoRepeat || click()

    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight

        Row {
            id: row

            anchors.centerIn: parent
            spacing: button.spacing

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: button.symbol !== ""
                name: button.symbol
                size: button.symbolSize
                weight: button.symbolWeight
                color: button.color
            }

            Text {
                anchors.verticalCenter: parent.verticalCenter
                visible: text !== ""
                text: button.text
                font: button.font
                color: button.color
            }
        }
    }

    FocusRing {
        shown: button.visualFocus
        parentRadius: button.radius
    }

    // Most hints are never seen, so they are made when the pointer comes.
    Loader {
        active: button.hint !== "" && (button.hovered || button.visualFocus)

        sourceComponent: Hint {
            parent: button
            text: button.hint
            visible: !button.down
        }
    }
}
