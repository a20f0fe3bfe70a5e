import QtQuick
import Velmor.Controls
import Velmor.Home

// The main window's content: the card, the drawer with all settings below it, and around them the
// window's buttons, the toast and the build stamp. As wide as stated and as high as its content,
// smoothly when that changes.
Item {
    id: home

    required property AppModel model

    // The window's buttons were pressed.
    signal closeRequested
    signal minimiseRequested

    readonly property bool showScans: screen.showScans

    // A failure comes in the status line first and in the toast then: once is enough.
    function tellToast() {
        announcer.text = screen.showToast && screen.toast !== card.statusText ? screen.toast : "";
    }

    implicitWidth: 380
    implicitHeight: card.height + drawer.height

    HomeScreen {
        id: screen

        model: home.model
        onShowToastChanged: home.tellToast()
    }

    BackgroundGradient {
        anchors.fill: parent
        radius: Theme.cardRadius
    }

    // In the order of reading, which is that of the Tab key.
    TrafficLights {
        objectName: "trafficLights"
        z: 2
        onCloseClicked: home.closeRequested()
        onMinimiseClicked: home.minimiseRequested()
    }

    // Shadows end at the edge of the card.
    Item {
        anchors.fill: parent
        clip: true

        BaseWidgetView {
            id: card

            objectName: "card"
            width: parent.width
            model: home.model
        }

        DrawerSection {
            id: drawer

            objectName: "drawer"
            y: card.height
            width: parent.width
            model: home.model
            shown: screen.showAdvanced
        }

        ToastPill {
            id: toast

            objectName: "toast"
            text: screen.toast
            shown: screen.showToast
            Accessible.onNameChanged: home.tellToast()
        }
    }

    BuildStamp {
        objectName: "buildStamp"
        anchors.right: parent.right
        text: screen.stamp
    }

    Announcer {
        id: announcer

        item: toast
    }
}
