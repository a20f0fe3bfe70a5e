import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Velmor.Controls
import Velmor.Preview
import Velmor.Browser

// The screen over the output folder: the saved scans at the left; at the right the tools over a
// preview, or the page editor in their place.
Item {
    id: view

    required property ScansBrowser browser
    // Of the sheet that this lies on.
    readonly property real cornerRadius: {
        const drawer = view.Window.window as GalleryWindow;
        return drawer && drawer.composited ? drawer.cardRadius : 0;
    }
    // The page editor: made anew for each thing that the browser says is to be edited.
    required property Component editor

    KeyCommands {
        isEnabled: !view.browser.isEditing && !grid.hasPopup
        onKey: name => view.browser.handleKey(name)
    }

    // What the window has to be wide and high for both columns.
    implicitWidth: 260 + 1 + rightColumn.leastWidth
    implicitHeight: 440

    T.SplitView {
        anchors.fill: parent
        orientation: Qt.Horizontal

        handle: Item {
            implicitWidth: 1

            // Wider than what is seen of it.
            containmentMask: Item {
                x: -4
                width: 9
                height: 10000
            }

            Rectangle {
                anchors.fill: parent
                color: Qt.rgba(0, 0, 0, 0.1)
            }
        }

        ScansGrid {
            id: grid

            // In a screen too narrow for both columns the tools have precedence.
            T.SplitView.minimumWidth: Math.min(260, view.width - 1 - rightColumn.leastWidth)
            T.SplitView.preferredWidth: 364
            T.SplitView.maximumWidth: view.width - 1 - rightColumn.leastWidth
            browser: view.browser
            cornerRadius: view.cornerRadius
        }

        Item {
            id: rightColumn

            readonly property real leastWidth: Math.max(360, toolBar.implicitWidth)

            T.SplitView.minimumWidth: leastWidth
            T.SplitView.fillWidth: true
            clip: true

            // Beyond the left edge, as only the sheet's own corners are round.
            RoundedBox {
                anchors.fill: parent
                anchors.leftMargin: -radius
                radius: view.cornerRadius
                color: Theme.track
            }

            Item {
                anchors.fill: parent
                visible: !view.browser.isEditing

                BrowserToolBar {
                    id: toolBar

                    width: parent.width
                    cornerRadius: view.cornerRadius
                    browser: view.browser
                }

                PDFKitView {
                    anchors.top: toolBar.bottom
                    anchors.bottom: parent.bottom
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.margins: 14
                    visible: view.browser.hasPreview
                    url: view.browser.previewURL
                    revision: view.browser.previewRevision
                    box: view.browser.pdfViewBox
                }

                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: toolBar.height + (parent.height - toolBar.height - height) / 2
                    visible: !view.browser.hasPreview
                    text: qsTr("No scans yet")
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    font.family: Theme.fontFamily
                    font.pixelSize: 13
                    color: Theme.textSecondary
                }

                RoundedBox {
                    anchors.horizontalCenter: parent.horizontalCenter
                    anchors.bottom: parent.bottom
                    anchors.bottomMargin: 14
                    visible: view.browser.note !== ""
                    width: Math.min(noteText.implicitWidth + 16, parent.width - 28)
                    height: noteText.height + 16
                    radius: Math.min(height / 2, 16)
                    color: Qt.alpha(Theme.track, 0.92)
                    lineWidth: 1
                    lineColor: Qt.rgba(0, 0, 0, 0.08)

                    Text {
                        id: noteText

                        anchors.centerIn: parent
                        width: Math.min(implicitWidth, parent.width - 16)
                        text: view.browser.note
                        wrapMode: Text.Wrap
                        maximumLineCount: 3
                        horizontalAlignment: Text.AlignHCenter
                        elide: Text.ElideRight
                        font.family: Theme.fontFamily
                        font.pixelSize: 12
                        color: Theme.textPrimary
                        Accessible.role: Accessible.AlertMessage
                        Accessible.name: text
                    }
                }
            }

            Loader {
                id: editorPlace

                readonly property string identity: view.browser.editorIdentity
                readonly property Item shown: item as Item

                anchors.fill: parent
                active: false
                sourceComponent: view.editor
                // What had the focus before the editor took it.
                property Item former: null

                function giveFocusBack() {
                    if (view.browser.isEditing)
                        return;
                    if (former && former.visible && former.enabled && former.activeFocusOnTab)
                        former.forceActiveFocus(Qt.OtherFocusReason);
                    else
                        grid.takeFocus();
                }

                // Another file or mode is another editor.
                onIdentityChanged: {
                    if (!active)
                        former = view.Window.activeFocusItem;
                    active = false;
                    active = identity !== "";
                    if (!active)
                        focusReturn.start();
                }
                onLoaded: shown.forceActiveFocus()

                Timer {
                    id: focusReturn

                    interval: 0 // once what was hidden is to be seen again
                    onTriggered: editorPlace.giveFocusBack()
                }
            }
        }
    }

    ImportTarget {
        anchors.fill: parent
        enabled: !view.browser.isEditing && !grid.isDragging
        browser: view.browser
    }
}
