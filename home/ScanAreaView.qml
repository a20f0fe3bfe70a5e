import QtQuick
import QtQuick.Window
import Velmor.Controls
import Velmor.Home

// The middle of the card: the round button, the way to stop a job, and the count of pages after it.
// How far the making of a PDF has come is a ring around any of these.
Item {
    id: view

    required property AppModel model

    readonly property alias statusText: area.statusText

    // Of the last press of a button here.
    property bool byKeyboard: false

    // Who pressed the button that has gone goes on with the one in its place, unless they went away.
    function goOnWith(button: Item) {
        const focused = Window.activeFocusItem;
        const elsewhere = focused?.activeFocusOnTab && focused !== scanButton && focused !== stopButton;
        if (byKeyboard && button.visible && !elsewhere)
            button.forceActiveFocus(Qt.TabFocusReason);
    }

    ScanArea {
        id: area

        model: view.model
    }

    Column {
        id: scanning

        anchors.centerIn: parent
        visible: area.state === ScanArea.Scanning
        spacing: 8

        ScanButton {
            id: stopButton

            objectName: "stopButton"
            anchors.horizontalCenter: parent.horizontalCenter
            symbol: "stop"
            symbolSize: 26
            Accessible.name: qsTr("Stop scanning")
            onClicked: {
                view.byKeyboard = visualFocus;
                area.stop();
            }
            onVisibleChanged: view.goOnWith(stopButton)
        }

        Row {
            objectName: "statusRow"
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 6

            Spinner {
                anchors.verticalCenter: parent.verticalCenter
                width: 12
                height: 12
                running: scanning.visible
            }

            Text {
                id: status

                width: Math.min(implicitWidth, view.width - 18)
                text: area.statusText
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 1
                font.family: Theme.fontFamily
                font.pixelSize: 11
                color: Theme.textSecondary
                Accessible.ignored: true
            }
        }
    }

    SuccessFlash {
        objectName: "success"
        anchors.centerIn: parent
        shown: area.state === ScanArea.Success
        text: area.successText
    }

    ReadyButton {
        id: scanButton

        objectName: "scanButton"
        anchors.centerIn: parent
        visible: area.state === ScanArea.Button
        area: area
        onClicked: {
            view.byKeyboard = visualFocus;
            area.press();
        }
        onVisibleChanged: view.goOnWith(scanButton)
    }

    AssemblyRing {
        objectName: "assembly"
        readonly property real middle: scanning.visible ? scanning.y + 42 : parent.height / 2

        anchors.horizontalCenter: parent.horizontalCenter
        y: middle - height / 2
        shown: area.assembling
        text: area.assemblyText
        value: area.assemblyFraction
    }

    // The status line for those who don't see it: it's spoken in every state.
    Item {
        id: spoken

        objectName: "spokenStatus"
        width: 1
        height: 1
        Accessible.role: Accessible.AlertMessage
        Accessible.name: area.statusText
    }

    Announcer {
        item: spoken
        text: spoken.Accessible.name
    }
}
