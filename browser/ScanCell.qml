import QtQuick
import Velmor.Controls
import Velmor.Browser

// A scan in the grid: its first page, framed, with a tick when it is marked.
Item {
    id: cell

    required property ScansBrowser browser
    required property ThumbnailStore store
    required property int place
    // Whether the keyboard acts on it.
    property bool isCurrent: false
    readonly property alias thumbnail: thumbnail
    readonly property url scan: thumbnail.url

    width: browser.thumbSize
    height: Math.round(width * thumbnail.ratio)
    visible: thumbnail.isThere

    Accessible.role: Accessible.ListItem
    Accessible.name: thumbnail.name
    Accessible.selectable: true
    Accessible.selected: thumbnail.selected
    Accessible.ignored: !visible
    Accessible.onPressAction: browser.toggle(scan)

    PDFThumbnail {
        id: thumbnail

        anchors.fill: parent
        browser: cell.browser
        store: cell.store
        place: cell.place
    }

    Icon {
        anchors.centerIn: parent
        visible: !thumbnail.hasImage
        name: "document"
        size: 22
        color: Theme.textSecondary
    }

    RoundedBox {
        anchors.fill: parent
        radius: 10
        color: "transparent"
        lineWidth: thumbnail.selected ? 2.5 : 1
        lineColor: thumbnail.selected ? Theme.accent : Qt.rgba(0, 0, 0, 0.08)
    }

    RoundedBox {
        visible: thumbnail.selected
        anchors.top: parent.top
        anchors.right: parent.right
        anchors.margins: 6
        width: 20
        height: 20
        radius: 10
        color: Theme.accent
        lineWidth: 1.5
        lineColor: "#FFFFFF"

        Icon {
            anchors.centerIn: parent
            name: "check"
            size: 10
            weight: Font.Black
            color: "#FFFFFF"
        }
    }

    FocusRing {
        shown: cell.isCurrent
        parentRadius: 10
    }

    HoverHandler {
        id: pointer

        // A cell that the pointer leaves by scrolling or vanishing tells that, too.
        property bool isEntered: false
        property url entered

        onHoveredChanged: hovered ? enter() : leave()
        Component.onDestruction: leave()

        function enter() {
            isEntered = cell.visible;
            entered = cell.scan;
            if (isEntered)
                cell.browser.enter(entered);
        }

        function leave() {
            if (isEntered)
                cell.browser.leave(entered);
            isEntered = false;
        }
    }

    onScanChanged: {
        if (pointer.hovered) {
            pointer.leave();
            pointer.enter();
        }
    }
}
