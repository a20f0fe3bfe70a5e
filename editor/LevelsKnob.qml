import QtQuick
import Velmor.Controls

// One end of the levels: a round knob, for the pointer part of the slider that it stands on, for
// the keyboard and for screen readers a slider of its own.
FocusItem {
    id: knob

    required property string name
    // In percent, and as a text.
    required property real level
    required property string valueText
    // The same for screen readers, which may write it: that asks for another level.
    property real value
    required property color color
    required property color ringColor
    readonly property real minimumValue: 0
    readonly property real maximumValue: 100
    readonly property real stepSize: 1
    readonly property real ring: 0.5

    signal keyPressed(event: var)
    signal stepped(key: int)
    signal levelAsked(level: real)

    onLevelChanged: value = level
    Component.onCompleted: value = level
    onValueChanged: {
        if (value === level)
            return;
        levelAsked(value);
        value = level;
    }

    width: 18
    height: 18
    Accessible.role: Accessible.Slider
    Accessible.name: name
    Accessible.description: valueText
    Accessible.focusable: true
    Accessible.onIncreaseAction: stepped(Qt.Key_Right)
    Accessible.onDecreaseAction: stepped(Qt.Key_Left)
    Keys.onPressed: event => keyPressed(event)

    SoftShadow {
        anchors.fill: parent
        radius: width / 2
        blur: 2
        offsetY: 1
        color: Qt.rgba(0, 0, 0, 0.25)
    }

    RoundedBox {
        anchors.fill: parent
        anchors.margins: -knob.ring
        radius: width / 2
        color: "transparent"
        lineWidth: knob.ring
        lineColor: Qt.rgba(0, 0, 0, 0.12)
    }

    RoundedBox {
        anchors.fill: parent
        radius: width / 2
        color: knob.color
        lineWidth: 1
        lineColor: knob.ringColor
    }

    FocusRing {
        shown: knob.visualFocus
        parentRadius: knob.width / 2
    }
}
