import QtQuick
import Velmor.Controls

// A slider with its name before it and its value, a whole number, behind it.
FocusScope {
    id: row

    property string label
    property real value: 0
    property int readout: 0

    signal moved(real position)

    implicitHeight: Math.max(name.height, slider.height)

    Text {
        id: name

        anchors.verticalCenter: parent.verticalCenter
        width: 78
        text: row.label
        elide: Text.ElideRight
        font.family: Theme.fontFamily
        font.pixelSize: 13
        color: Theme.textPrimary
    }

    ValueSlider {
        id: slider

        objectName: row.objectName + "Slider"
        anchors.left: name.right
        anchors.leftMargin: 10
        anchors.right: number.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        focus: true
        from: -100
        to: 100
        // For the arrow keys alone.
        stepSize: 1
        snapMode: ValueSlider.NoSnap
        value: row.value
        hint: row.label
        onMoved: row.moved(value)
    }

    EvenDigits {
        id: number

        objectName: row.objectName + "Readout"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 32
        text: row.readout
    }
}
