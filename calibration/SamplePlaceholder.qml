import QtQuick
import Velmor.Controls

// Stands where the sample will be.
RoundedBox {
    id: placeholder

    property bool isBusy: false

    signal scanRequested

    radius: 12
    color: Theme.track

    Column {
        id: advice

        anchors.centerIn: parent
        width: parent.width - 40
        spacing: 6

        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "scan-page"
            size: 26
            color: Theme.textSecondary
        }

        Text {
            objectName: "placeholderText"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: qsTr("Put a page in the scanner — the calibration scan runs automatically.")
            font.family: Theme.fontFamily
            font.pixelSize: 12
            color: Theme.textSecondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    PlainButton {
        objectName: "scanNow"
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: advice.bottom
        anchors.topMargin: 8
        padding: 4
        text: qsTr("Scan now")
        font.pixelSize: 12
        color: Theme.accent
        enabled: !placeholder.isBusy
        onClicked: placeholder.scanRequested()
    }
}
