import QtQuick
import Velmor.Controls
import Velmor.Browser

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// The saved scans: double click or Return opens one.
Item {
    id: view

    required property ScansList scans

    Text {
        anchors.centerIn: parent
        visible: list.count === 0
        text: qsTr("No scans yet")
        font.pixelSize: 15
        color: Theme.textSecondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    ListView {
        id: list

        anchors.fill: parent
        anchors.margins: 16
        model: view.scans
        focus: true
        clip: true
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        highlightMoveDuration: 0
        Accessible.role: Accessible.List
        Accessible.name: qsTr("My scans")
        Keys.onReturnPressed: view.scans.open(currentIndex)
        Keys.onEnterPressed: view.scans.open(currentIndex)

        delegate: Rectangle {
            id: row

            required property int index
            required property string name
            required property string date

            width: list.width
            height: 40
            radius: 8
            color: ListView.isCurrentItem ? Theme.track : "transparent"
            Accessible.role: Accessible.ListItem
            Accessible.name: qsTr("%1, %2").arg(name).arg(date)
            Accessible.selected: ListView.isCurrentItem
            Accessible.onPressAction: view.scans.open(index)

            Text {
                anchors.left: parent.left
                anchors.right: dateLabel.left
                anchors.margins: 12
                anchors.verticalCenter: parent.verticalCenter
                text: row.name
                elide: Text.ElideMiddle
                font.pixelSize: 13
                color: Theme.textPrimary
            }

            Text {
                id: dateLabel

                anchors.right: parent.right
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter
                text: row.date
                font.pixelSize: 12
                color: Theme.textSecondary
            }

            MouseArea {
                anchors.fill: parent
                onPressed: {
                    list.forceActiveFocus();
                    list.currentIndex = row.index;
                }
                onDoubleClicked: view.scans.open(row.index)
            }
        }
    }
}
