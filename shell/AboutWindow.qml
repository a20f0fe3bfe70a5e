import QtQuick
import Velmor.Controls

// What the application is, and whom its engine is owed to.
DialogWindow {
    id: about

    // Maps with text, size in pixels, weight and gray.
    property var lines: []

    title: qsTr("About VELMOR")
    contentWidth: 470

    Image {
        anchors.horizontalCenter: parent.horizontalCenter
        source: "qrc:/velmor/brand/velmor.svg"
        sourceSize.width: 64
        sourceSize.height: 64
        Accessible.ignored: true
    }

    Text {
        width: parent.width
        bottomPadding: 8
        horizontalAlignment: Text.AlignHCenter
        text: "VELMOR"
        font.family: Theme.fontFamily
        font.pixelSize: 16
        font.weight: Font.Bold
        color: Theme.textPrimary
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Repeater {
        model: about.lines

        Text {
            required property var modelData

            width: parent?.width ?? 0
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: modelData.text
            font.family: Theme.fontFamily
            font.pixelSize: modelData.size
            font.weight: modelData.weight
            color: modelData.gray ? Theme.textSecondary : Theme.textPrimary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.ignored: text === ""
        }
    }

    Item {
        width: 1
        height: 12
    }

    PillButton {
        anchors.horizontalCenter: parent.horizontalCenter
        filled: true
        focus: true
        text: qsTr("Close")
        onClicked: about.close()
    }
}
