import QtQuick
import Velmor.Controls

// An icon, a text, or both side by side, in the middle of its area.
Item {
    id: pair

    property string symbol
    property real symbolSize: 14
    property int symbolWeight: Font.Normal
    property color color: Theme.textPrimary
    property alias text: label.text
    property alias font: label.font
    property alias spacing: row.spacing

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.centerIn: parent

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: name !== ""
            name: pair.symbol
            size: pair.symbolSize
            weight: pair.symbolWeight
            color: pair.color
        }

        Text {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            color: pair.color
        }
    }
}
