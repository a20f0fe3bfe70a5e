import QtQuick
import Velmor.Controls
import Velmor.Home

// The bar at the bottom of the card: settings, the last failure, and the scans.
Item {
    id: bar

    required property BaseWidget base

    implicitHeight: Math.max(settings.height, scans.height)

    ToggleButton {
        id: settings

        objectName: "settingsButton"
        anchors.verticalCenter: parent.verticalCenter
        padding: 6
        symbol: "settings"
        symbolSize: 19
        symbolWeight: Font.DemiBold
        color: isOn ? Theme.accent : Theme.textSecondary
        hint: qsTr("Settings")
        isOn: bar.base.showAdvanced
        onClicked: bar.base.toggleAdvanced()
    }

    FailureSign {
        objectName: "failure"
        anchors.left: settings.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: bar.base.lastError
    }

    ToggleButton {
        id: scans

        objectName: "scansButton"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        padding: 6
        symbol: "scans"
        symbolSize: 21
        symbolWeight: Font.DemiBold
        color: isOn ? Theme.accent : Theme.textSecondary
        hint: qsTr("My scans")
        isOn: bar.base.showScans
        Accessible.description: bar.base.scanCount === 1 ? qsTr("1 scan") : qsTr("%n scans", "", bar.base.scanCount)
        onClicked: bar.base.toggleScans()

        // Down into the body of the folder.
        Text {
            objectName: "scanCount"
            anchors.centerIn: parent
            anchors.verticalCenterOffset: 2.5
            visible: bar.base.scanCount > 0
            text: bar.base.scanCount
            font.family: Theme.fontFamily
            font.pointSize: Theme.points(8.5)
            font.weight: Font.Bold
            color: scans.color
            Accessible.ignored: true
        }
    }
}
