import QtQuick
import Velmor.Preview

// The standard keys are unknown to qmllint of Qt 6.4.
// qmllint disable unqualified

// The live preview of one document: all its pages in one column, fitted to the width until the user
// zooms. A new `revision` shows the file anew, from its top. A file that can't be opened leaves it
// empty.
//
// Ctrl+F finds text, Ctrl with + and - zooms, Ctrl+0 fits the page again; these work wherever the
// focus is in the window. All else that a PDFView answers needs the focus, which a click gives.
FocusScope {
    id: preview

    property url url
    property int revision: 0
    property PDFViewBox box: null
    readonly property alias view: pages

    readonly property bool hasPages: visible && pages.pageCount > 0

    PDFViewCoordinator {
        id: coordinator

        view: pages
        url: preview.url
        revision: preview.revision
        box: preview.box
    }

    PDFView {
        id: pages

        anchors.fill: parent
        focus: true
        Accessible.role: Accessible.Document
        Accessible.name: documentName
        Accessible.description: pageCount > 0 ? qsTr("Page %1 of %2").arg(currentPage + 1).arg(pageCount) : ""
        Accessible.focusable: true
    }

    PreviewScrollBar {
        orientation: Qt.Vertical
        anchors.right: parent.right
        height: parent.height
        start: pages.visibleShare.y
        share: pages.visibleShare.height
        onMoved: start => pages.scrollToShare(Qt.point(pages.visibleShare.x, start))
    }

    PreviewScrollBar {
        orientation: Qt.Horizontal
        anchors.bottom: parent.bottom
        width: parent.width
        start: pages.visibleShare.x
        share: pages.visibleShare.width
        onMoved: start => pages.scrollToShare(Qt.point(start, pages.visibleShare.y))
    }

    FindBar {
        id: findBar

        anchors.top: parent.top
        anchors.right: parent.right
        anchors.margins: 8
        maximumWidth: parent.width - 16
        search: pages.search
        visible: false
        onClosed: {
            visible = false;
            pages.forceActiveFocus();
        }
    }

    Shortcut {
        sequences: [StandardKey.Find]
        enabled: preview.hasPages
        onActivated: findBar.open()
    }

    Shortcut {
        sequences: [StandardKey.FindNext]
        enabled: findBar.visible
        onActivated: pages.search.next()
    }

    Shortcut {
        sequences: [StandardKey.FindPrevious]
        enabled: findBar.visible
        onActivated: pages.search.previous()
    }

    Shortcut {
        sequences: [StandardKey.ZoomIn, "Ctrl+="]
        enabled: preview.hasPages
        onActivated: pages.zoomBy(1.25)
    }

    Shortcut {
        sequences: [StandardKey.ZoomOut]
        enabled: preview.hasPages
        onActivated: pages.zoomBy(0.8)
    }

    Shortcut {
        sequences: ["Ctrl+0"]
        enabled: preview.hasPages
        onActivated: coordinator.fitAgain()
    }
}
