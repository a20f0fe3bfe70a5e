import QtQuick
import Velmor.Controls
import Velmor.Browser

// The content has ids, so that it is made at once.
// qmllint disable deferred-property-id

// Asks for a scan's new name, beside its cell. Return renames; what speaks against a name is told
// below it.
Popover {
    id: popover

    required property ScansBrowser browser
    property url scan
    property string problem

    function openFor(cell: Item, url: url) {
        parent = cell;
        scan = url;
        problem = "";
        field.text = browser.nameOf(url);
        open();
    }

    function rename() {
        problem = browser.rename(scan, field.text);
        if (problem === "")
            close();
    }

    onOpened: {
        field.selectAll();
        field.forceActiveFocus(Qt.PopupFocusReason);
    }

    contentItem: Column {
        spacing: 10

        TextBox {
            id: field

            objectName: "scanName"
            width: 230
            placeholderText: qsTr("Name of the scan")
            focus: true
            onTextEdited: popover.problem = ""
            onAccepted: popover.rename()
        }

        Text {
            objectName: "nameProblem"
            width: field.width
            visible: text !== ""
            text: popover.problem
            wrapMode: Text.WordWrap
            font.family: Theme.fontFamily
            font.pixelSize: 12
            color: Theme.danger
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }

        PillButton {
            anchors.right: parent.right
            filled: true
            text: qsTr("Rename")
            onClicked: popover.rename()
        }
    }
}
