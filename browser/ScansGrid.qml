import QtQuick
import Velmor.Controls
import Velmor.Preview
import Velmor.Browser

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// The saved scans in columns that fill the width, newest first, over a slider for their size.
//
// Arrow keys, Page Up and Down, Home and End go from scan to scan, Space marks one like a click,
// Return opens it, the menu key shows what else can be done with it, F2 renames it, Ctrl+C copies
// it.
Item {
    id: grid

    required property ScansBrowser browser
    readonly property int columns: Math.max(1, Math.floor((list.width + gap) / (browser.thumbSize + gap)))
    readonly property real columnWidth: Math.min(browser.thumbSize + 60, (list.width - (columns - 1) * gap) / columns)
    readonly property int gap: 16
    // Of the sheet whose left end this lies on.
    property real cornerRadius: 0
    // The scan that the keyboard acts on, and its place, which changes as scans come and go.
    property int current: 0
    property url currentScan
    // The keyboard went to the last row, whose height is known once its pages are drawn.
    property bool staysAtEnd: false
    // Who came by the pointer needs no ring to see where that is.
    property bool isRingShown: true
    readonly property bool hasPopup: menu.visible || naming.visible
    readonly property alias isDragging: handover.isDragging

    function go(steps: int) {
        pointAt(Math.max(0, Math.min(browser.count - 1, current + steps)));
        const row = Math.floor(current / columns);
        list.positionViewAtIndex(row, ListView.Contain);
        // At the ends with the margin, which positioning leaves out.
        if (row === 0)
            list.contentY = list.originY - gap;
        staysAtEnd = row > 0 && row === list.count - 1;
        if (staysAtEnd)
            showEnd();
        isRingShown = true;
    }

    function showEnd() {
        list.contentY = list.originY + list.contentHeight + gap - list.height;
    }

    // How many scans are in view.
    function page(): int {
        const first = list.indexAt(0, list.contentY + gap);
        const last = list.indexAt(0, list.contentY + list.height - gap);
        return columns * Math.max(1, last - first);
    }

    function pointAt(place: int) {
        current = place;
        currentScan = browser.urlAt(place);
    }

    function pressAt(place: int) {
        pointAt(place);
        list.forceActiveFocus(Qt.MouseFocusReason);
        isRingShown = false;
    }

    function takeFocus() {
        list.forceActiveFocus(Qt.OtherFocusReason);
    }

    // Brings the current scan into view.
    function currentCell(): ScanCell {
        go(0);
        list.forceLayout();
        const row = list.itemAtIndex(Math.floor(current / columns)) as ScanRow;
        return row?.cellAt(current % columns) ?? null;
    }

    function press(event: KeyEvent) {
        const asksForMenu = event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier);
        if (asksForMenu)
            menu.openByKey(currentCell());
        else if (event.key === Qt.Key_F2 && browser.aimAt(currentScan))
            naming.openFor(currentCell(), currentScan);
        else if (event.matches(StandardKey.Copy))
            handover.copy(currentScan);
        else if (event.key === Qt.Key_Home || event.key === Qt.Key_End)
            go(event.key === Qt.Key_End ? browser.count : -browser.count);
        else if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown)
            go(event.key === Qt.Key_PageDown ? page() : -page());
        else
            return;
        event.accepted = true;
    }

    clip: true

    RoundedBox {
        anchors.fill: parent
        anchors.rightMargin: -radius
        radius: grid.cornerRadius
        color: Qt.alpha(Theme.track, 0.55)
    }

    Component.onCompleted: pointAt(0)

    Connections {
        target: grid.browser

        function onResultsChanged() {
            const place = grid.browser.placeOf(grid.currentScan);
            grid.pointAt(place >= 0 ? place : Math.max(0, Math.min(grid.current, grid.browser.count - 1)));
        }
    }

    ThumbnailStore {
        id: thumbnails
    }

    ScanHandover {
        id: handover

        browser: grid.browser
    }

    ScanMenu {
        id: menu

        objectName: "scanMenu"
        browser: grid.browser
        handover: handover
        onClosed: list.forceActiveFocus(Qt.PopupFocusReason)
        onRenameAsked: naming.openFor(cell, scan)
    }

    RenamePopover {
        id: naming

        objectName: "renamePopover"
        browser: grid.browser
        onClosed: list.forceActiveFocus(Qt.PopupFocusReason)
    }

    ListView {
        id: list

        anchors.top: parent.top
        anchors.bottom: footer.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: grid.gap
        anchors.rightMargin: grid.gap
        topMargin: grid.gap
        bottomMargin: grid.gap
        spacing: grid.gap
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: 400
        activeFocusOnTab: true
        keyNavigationEnabled: false
        Accessible.role: Accessible.List
        Accessible.name: qsTr("My scans")
        onMovementStarted: grid.staysAtEnd = false
        onContentHeightChanged: {
            if (grid.staysAtEnd)
                grid.showEnd();
        }
        Keys.onLeftPressed: grid.go(-1)
        Keys.onRightPressed: grid.go(1)
        Keys.onUpPressed: grid.go(-grid.columns)
        Keys.onDownPressed: grid.go(grid.columns)
        Keys.onSpacePressed: grid.browser.toggle(grid.currentScan)
        Keys.onReturnPressed: handover.open(grid.currentScan)
        Keys.onEnterPressed: handover.open(grid.currentScan)
        Keys.onPressed: event => grid.press(event)
        onActiveFocusChanged: {
            if (!activeFocus)
                grid.isRingShown = true;
        }

        model: ScanRows {
            cells: grid.browser.count
            columns: grid.columns
        }

        delegate: ScanRow {
            width: list.width
            browser: grid.browser
            store: thumbnails
            columns: grid.columns
            columnWidth: grid.columnWidth
            gap: grid.gap
            ringPlace: list.activeFocus && grid.isRingShown ? grid.current : -1
            onPressedAt: place => grid.pressAt(place)
            onOpened: scan => handover.open(scan)
            onMenuAsked: (cell, point) => menu.openAt(cell, point)
            onDraggedOut: cell => handover.drag(cell.thumbnail)
        }
    }

    PreviewScrollBar {
        orientation: Qt.Vertical
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.right: parent.right
        start: list.visibleArea.yPosition
        share: list.visibleArea.heightRatio
        onPressedChanged: grid.staysAtEnd = false
        onMoved: start => list.contentY = list.originY - list.topMargin + start * (list.contentHeight + list.topMargin + list.bottomMargin)
    }

    Rectangle {
        anchors.bottom: footer.top
        width: parent.width
        height: 1
        color: Qt.rgba(0, 0, 0, 0.1)
    }

    GridFooter {
        id: footer

        anchors.bottom: parent.bottom
        width: parent.width
        browser: grid.browser
    }
}
