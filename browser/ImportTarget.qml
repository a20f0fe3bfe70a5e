import QtQuick
import Velmor.Controls
import Velmor.Browser

// Takes the files that are dropped here or pasted, and shows where while they are dragged.
DropArea {
    id: target

    required property ScansBrowser browser

    keys: ["text/uri-list"]
    onEntered: drag => drag.accept(Qt.CopyAction)
    onDropped: drop => {
        drop.accept(Qt.CopyAction);
        imports.bring(drop.urls);
    }

    ScanImports {
        id: imports

        browser: target.browser
    }

    Shortcut {
        enabled: target.enabled
        // qmllint disable unqualified
        sequences: [StandardKey.Paste]
        // qmllint enable unqualified
        onActivated: imports.paste()
    }

    RoundedBox {
        anchors.fill: parent
        anchors.margins: 6
        visible: target.containsDrag
        radius: 10
        color: Qt.alpha(Theme.accent, 0.08)
        lineWidth: 2
        lineColor: Theme.accent
    }

    // Clear of the picture under the pointer, mostly.
    RoundedBox {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 24
        visible: target.containsDrag
        width: invitation.width + 28
        height: invitation.height + 16
        radius: height / 2
        color: Theme.accent

        Text {
            id: invitation

            anchors.centerIn: parent
            text: qsTr("Drop to import")
            font.family: Theme.fontFamily
            font.pixelSize: 13
            font.weight: Font.DemiBold
            color: "#FFFFFF"
        }
    }
}
