import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// A check box with its label. A click changes `checked`.
T.CheckBox {
    id: box

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(indicator.height, implicitContentHeight) + topPadding + bottomPadding
    spacing: 6
    opacity: enabled ? 1 : Theme.disabledOpacity
    font.family: Theme.fontFamily
    font.pixelSize: 12

    function press() {
        toggle();
        toggled();
        clicked();
    }

    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: press()
    Accessible.onToggleAction: press()
    Keys.onReturnPressed: event => event.isAutoRepeat || press()
    Keys.onEnterPressed: event => event.isAutoRepeat || press()

    indicator: RoundedBox {
        x: box.leftPadding
        y: Math.round((box.height - height) / 2)
        width: 14
        height: 14
        radius: 4
        color: box.checked ? (box.down ? Theme.accentPressed : Theme.accent) : "#FFFFFF"
        lineWidth: box.checked ? 0 : 1
        lineColor: box.down ? Theme.accent : Qt.rgba(0, 0, 0, 0.22)

        Icon {
            anchors.centerIn: parent
            visible: box.checked
            name: "check"
            size: 10
            weight: Font.Black
            color: "#FFFFFF"
        }

        FocusRing {
            shown: box.visualFocus
            parentRadius: 4
            gap: 1
        }
    }

    contentItem: Text {
        leftPadding: box.indicator.width + box.spacing
        text: box.text
        font: box.font
        color: Theme.textPrimary
        verticalAlignment: Text.AlignVCenter
    }
}
