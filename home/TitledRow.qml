import QtQuick
import Velmor.Controls

// A row of the panel: a title, a line below it that explains it, if there is one, and at the right
// end the row's control.
Item {
    id: row

    property string title
    property string subtitle
    property int subtitleElide: Text.ElideNone
    // What stands behind the texts, at their right.
    property alias aside: asideSlot.children
    default property alias control: controlSlot.children

    readonly property real textWidth: width - controlSlot.width - 10 - (asideSlot.width > 0 ? asideSlot.width + 10 : 0)

    implicitHeight: Math.max(texts.height, controlSlot.height, asideSlot.height)

    Column {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        Text {
            width: Math.min(implicitWidth, row.textWidth)
            text: row.title
            wrapMode: Text.Wrap
            font.family: Theme.fontFamily
            font.pixelSize: 13
            color: Theme.textPrimary
            Accessible.ignored: true
        }

        Text {
            width: Math.min(implicitWidth, row.textWidth)
            visible: text !== ""
            text: row.subtitle
            textFormat: Text.PlainText
            elide: row.subtitleElide
            wrapMode: row.subtitleElide === Text.ElideNone ? Text.Wrap : Text.NoWrap
            font.family: Theme.fontFamily
            font.pixelSize: 11
            color: Theme.textSecondary
        }
    }

    Item {
        id: asideSlot

        anchors.left: texts.right
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }

    Item {
        id: controlSlot

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }
}
