import QtQuick
import Velmor.Controls
import Velmor.Windows
import Velmor.Browser

// The drawer: a white sheet beside the main window that its edges resize and its ground moves. It
// is closed where it was opened, in the main window, and with Escape or Ctrl+W.
GalleryWindow {
    id: drawer

    title: qsTr("My scans")
    flags: Qt.Dialog | Qt.FramelessWindowHint
    cardWidth: 900
    cardHeight: 580
    cardRadius: 10
    smallestCard.width: Math.max(620, Math.ceil(contentLoader.implicitWidth))
    smallestCard.height: 440
    shadowMargin: 48

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: drawer.closeAsked()
    }

    Item {
        x: drawer.margin + drawer.drawnSlide
        y: drawer.margin
        width: drawer.cardWidth
        height: drawer.cardHeight
        opacity: drawer.composited ? drawer.presence : 1
        focus: true
        Keys.onEscapePressed: drawer.closeAsked()

        SoftShadow {
            anchors.fill: parent
            visible: drawer.composited
            radius: drawer.cardRadius
            blur: 14
            offsetY: 6
            color: "#4D000000"
            hollow: true
        }

        RoundedBox {
            anchors.fill: parent
            radius: drawer.composited ? drawer.cardRadius : 0
        }

        FocusScope {
            anchors.fill: parent
            focus: true
            opacity: drawer.presence

            Loader {
                id: contentLoader

                anchors.fill: parent
                focus: true
                sourceComponent: drawer.content
            }
        }
    }
}
