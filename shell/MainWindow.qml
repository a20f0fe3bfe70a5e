import QtQuick
import Velmor.Controls
import Velmor.Windows
import Velmor.Home
import Velmor.Browser
import Velmor.Editor
import Velmor.Shell

// The main window: the home screen as a card, the drawer beside it, and the application's menu.
KeyableMainWindow {
    id: window

    required property AppModel model
    required property AppDelegate application

    title: "Velmor"
    cardWidth: Math.ceil(home.implicitWidth)
    cardHeight: Math.ceil(home.implicitHeight)
    cardRadius: Theme.cardRadius
    shadowMargin: 48

    SoftShadow {
        anchors.fill: home
        visible: window.composited
        radius: window.cardRadius
        blur: 14
        offsetY: 6
        color: "#4D000000"
    }

    // Where the window is cut to the card's shape, the soft edge of that has something to blend into.
    Rectangle {
        anchors.fill: home
        visible: !window.composited
        color: Theme.gradientTop
    }

    HomeView {
        id: home

        x: window.margin
        y: window.margin
        width: window.cardWidth
        height: window.cardHeight
        focus: true
        model: window.model
        onCloseRequested: window.application.quit()
        onMinimiseRequested: window.showMinimized()

        GalleryPanel {
            ScansBrowserView {
                id: scans

                // The types of the model and of the request are known to other modules than these.
                // qmllint disable
                browser: ScansBrowser {
                    model: window.model
                }

                editor: PageEditorView {
                    cornerRadius: scans.cornerRadius
                    onDone: changed => scans.browser.finishEditing(changed)
                    Component.onCompleted: {
                        editor.model = window.model;
                        editor.open(scans.browser.editRequest);
                    }
                }
                // qmllint enable
            }
        }

        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: point => menu.popup(point.position.x, point.position.y)
        }

        ContextMenu {
            id: menu

            margins: window.margin + 6

            MenuEntry {
                text: qsTr("About VELMOR")
                onTriggered: window.application.showAbout()
            }

            MenuEntry {
                text: qsTr("Check for Updates…")
                onTriggered: window.application.checkForUpdates()
            }

            MenuEntry {
                text: qsTr("Quit")
                onTriggered: window.application.quit()
            }
        }
    }

    Shortcut {
        sequences: ["Menu", "Shift+F10"]
        onActivated: menu.popup(16, 40, menu.itemAt(0))
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.application.quit()
    }

    Shortcut {
        sequence: "Ctrl+M"
        context: Qt.ApplicationShortcut
        onActivated: window.showMinimized()
    }

    Shortcut {
        sequence: "Ctrl+Q"
        context: Qt.ApplicationShortcut
        onActivated: window.application.quit()
    }
}
