import QtQuick
import Velmor.Controls
import Velmor.Browser

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// The saved scans in columns that fill the width, newest first, over a slider for their size.
//
// Arrow keys go from scan to scan, Space marks one like a click, Return opens it.
Item {
    id: grid

    required property ScansBrowser browser
    readonly property int columns: Math.max(1, Math.floor((list.width + gap) / (browser.thumbSize + gap)))
    readonly property real columnWidth: Math.min(browser.thumbSize + 60, (list.width - (columns - 1) * gap) / columns)
    readonly property int gap: 16
    // Of the sheet whose left end this lies on.
    property real cornerRadius: 0
    // The scan that the keyboard acts on.
    property int current: 0

    function go(steps: int) {
        current = Math.max(0, Math.min(browser.count - 1, current + steps));
        list.positionViewAtIndex(Math.floor(current / columns), ListView.Contain);
    }

    clip: true

    RoundedBox {
        anchors.fill: parent
        anchors.rightMargin: -radius
        radius: grid.cornerRadius
        color: Qt.alpha(Theme.track, 0.55)
    }

    ThumbnailStore {
        id: thumbnails
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
        Keys.onLeftPressed: grid.go(-1)
        Keys.onRightPressed: grid.go(1)
        Keys.onUpPressed: grid.go(-grid.columns)
        Keys.onDownPressed: grid.go(grid.columns)
        Keys.onSpacePressed: grid.browser.toggle(grid.browser.urlAt(grid.current))
        Keys.onReturnPressed: grid.browser.open(grid.browser.urlAt(grid.current))
        Keys.onEnterPressed: grid.browser.open(grid.browser.urlAt(grid.current))

        model: ScanRows {
            cells: grid.browser.count
            columns: grid.columns
        }

        delegate: Item {
            id: row

            required property int index

            width: list.width
            height: cells.height

            Row {
                id: cells

                anchors.horizontalCenter: parent.horizontalCenter
                spacing: grid.gap

                Repeater {
                    model: grid.columns

                    Item {
                        id: column

                        required property int index
                        readonly property int place: row.index * grid.columns + index

                        width: grid.columnWidth
                        height: cell.visible ? cell.height : 0
                        anchors.verticalCenter: parent ? parent.verticalCenter : undefined

                        ScanCell {
                            id: cell

                            anchors.centerIn: parent
                            browser: grid.browser
                            store: thumbnails
                            place: column.place
                            isCurrent: list.activeFocus && grid.current === column.place
                        }

                        MouseArea {
                            anchors.fill: cell
                            acceptedButtons: Qt.LeftButton
                            onClicked: {
                                grid.current = column.place;
                                grid.browser.toggle(cell.scan);
                            }
                            onDoubleClicked: grid.browser.open(cell.scan)
                        }
                    }
                }
            }
        }
    }

    Rectangle {
        anchors.bottom: footer.top
        width: parent.width
        height: 1
        color: Qt.rgba(0, 0, 0, 0.1)
    }

    Item {
        id: footer

        anchors.bottom: parent.bottom
        width: parent.width
        height: slider.height + 16

        Icon {
            id: gridSymbol

            x: 12
            anchors.verticalCenter: parent.verticalCenter
            name: "grid"
            size: 13
            color: Theme.textSecondary
        }

        ValueSlider {
            id: slider

            anchors.left: gridSymbol.right
            anchors.leftMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            width: 120
            from: 90
            to: 260
            stepSize: 10
            snapMode: ValueSlider.NoSnap
            value: grid.browser.thumbSize
            hint: qsTr("Thumbnail size")
            onMoved: grid.browser.thumbSize = value
        }

        Text {
            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("%1 scans").arg(grid.browser.count)
            font.family: Theme.fontFamily
            font.pixelSize: 11
            color: Theme.textSecondary
        }
    }
}
