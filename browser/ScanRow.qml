import QtQuick
import Velmor.Controls
import Velmor.Browser

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// A row of the grid: its cells, and what the pointer does with them.
Item {
    id: row

    required property int index
    property ScansBrowser browser
    property ThumbnailStore store
    property int columns: 1
    property real columnWidth: 0
    property real gap: 0
    // The place that the keyboard acts on, if that is to be seen; else -1.
    property int ringPlace: -1

    signal pressedAt(place: int)
    signal opened(scan: url)
    signal menuAsked(cell: ScanCell, point: point)
    signal draggedOut(cell: ScanCell)

    function cellAt(column: int): ScanCell {
        return places.itemAt(column)?.cell ?? null;
    }

    height: cells.height

    Row {
        id: cells

        anchors.horizontalCenter: parent.horizontalCenter
        spacing: row.gap

        Repeater {
            id: places

            model: row.columns

            Item {
                id: column

                required property int index
                readonly property int place: row.index * row.columns + index
                readonly property alias cell: cell

                width: row.columnWidth
                // Places behind the last scan take their width.
                height: cell.visible ? cell.height : 1
                anchors.verticalCenter: parent ? parent.verticalCenter : undefined

                ScanCell {
                    id: cell

                    anchors.centerIn: parent
                    browser: row.browser
                    store: row.store
                    place: column.place
                    isCurrent: row.ringPlace === column.place
                }

                MouseArea {
                    id: pointer

                    property point start
                    // A finger scrolls where a mouse drags the scan out.
                    property bool isMouse: true

                    function isDrag(mouse: MouseEvent): bool {
                        const way = Math.abs(mouse.x - start.x) + Math.abs(mouse.y - start.y);
                        return pressed && isMouse && mouse.buttons === Qt.LeftButton && way >= Application.styleHints.startDragDistance;
                    }

                    anchors.fill: cell
                    enabled: !row.browser.isEditing
                    acceptedButtons: Qt.LeftButton | Qt.RightButton
                    preventStealing: isMouse
                    onPressed: mouse => {
                        isMouse = mouse.source === Qt.MouseEventNotSynthesized;
                        start = Qt.point(mouse.x, mouse.y);
                        row.pressedAt(column.place);
                    }
                    onPositionChanged: mouse => {
                        if (isDrag(mouse))
                            row.draggedOut(cell);
                    }
                    onPressAndHold: mouse => {
                        if (!isMouse)
                            row.menuAsked(cell, Qt.point(mouse.x, mouse.y));
                    }
                    onClicked: mouse => {
                        if (mouse.button === Qt.RightButton)
                            row.menuAsked(cell, start);
                        else
                            row.browser.toggle(cell.scan);
                    }
                    onDoubleClicked: mouse => {
                        if (mouse.button === Qt.LeftButton)
                            row.opened(cell.scan);
                    }
                }
            }
        }
    }
}
