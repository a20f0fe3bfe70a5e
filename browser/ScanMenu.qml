import QtQuick
import QtQuick.Templates as T
import Velmor.Controls
import Velmor.Browser

// What can be done with the scan in a cell, or with all marked ones if it is one of them.
ContextMenu {
    id: menu

    required property ScansBrowser browser
    required property ScanHandover handover
    property ScanCell cell
    property url scan

    signal renameAsked

    // At a point of the cell; opened by the keyboard, in its middle and on the first entry.
    function openAt(scanCell: ScanCell, point: point) {
        if (aim(scanCell))
            popup(scanCell, point.x, point.y);
    }

    function openByKey(scanCell: ScanCell) {
        if (aim(scanCell))
            popup(scanCell, scanCell.width / 2, scanCell.height / 2, itemAt(0));
    }

    function aim(scanCell: ScanCell): bool {
        if (!scanCell || !browser.aimAt(scanCell.scan))
            return false;
        cell = scanCell;
        scan = scanCell.scan;
        return true;
    }

    MenuEntry {
        text: qsTr("Open")
        onTriggered: menu.handover.open(menu.scan)
    }

    MenuEntry {
        text: qsTr("Show in folder")
        onTriggered: menu.handover.showInFolder(menu.scan)
    }

    MenuEntry {
        text: qsTr("Copy")
        onTriggered: menu.handover.copy(menu.scan)
    }

    MenuEntry {
        text: qsTr("Rename…")
        enabled: menu.browser.markedCount === 1
        onTriggered: menu.renameAsked()
    }

    T.MenuSeparator {
        implicitWidth: 0
        implicitHeight: 9

        background: Item {
            Rectangle {
                x: 6
                y: 4
                width: parent.width - 12
                height: 1
                color: Qt.rgba(0, 0, 0, 0.08)
            }
        }
    }

    MenuEntry {
        text: qsTr("Delete")
        onTriggered: menu.browser.deleteSelected()
    }
}
