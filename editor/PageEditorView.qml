import QtQuick
import Velmor.Editor

// The standard keys are unknown to qmllint of Qt 6.4.
// qmllint disable unqualified

// One page of a saved scan, in crop or in magic mode: the tool bar, the page, and in magic mode the
// levels below it. Whoever shows it gives `editor` its model, opens it, and removes the view when that
// is done.
//
// Ctrl with + and - zooms, Ctrl+0 fits the page, wherever the focus is in the window.
FocusScope {
    id: view

    readonly property alias editor: pageEditor
    // Of the sheet whose right end this lies on.
    property real cornerRadius: 0

    signal done(changed: bool)

    PageEditor {
        id: pageEditor

        onDone: changed => view.done(changed)
    }

    EditorKeys {
        editor: pageEditor
    }

    EditorToolBar {
        id: toolBar

        width: parent.width
        cornerRadius: view.cornerRadius
        editor: pageEditor
    }

    Rectangle {
        id: upperLine

        anchors.top: toolBar.bottom
        width: parent.width
        height: 1
        color: Qt.rgba(0, 0, 0, 0.1)
    }

    EditorArea {
        objectName: "area"
        anchors.top: upperLine.bottom
        anchors.bottom: magicControls.top
        width: parent.width
        focus: true
        editor: pageEditor
        cornerRadius: pageEditor.isCrop ? view.cornerRadius : 0
    }

    Loader {
        id: magicControls

        anchors.bottom: parent.bottom
        width: parent.width
        active: pageEditor.isMagic

        sourceComponent: Item {
            implicitHeight: controls.implicitHeight + 1

            Rectangle {
                width: parent.width
                height: 1
                color: Qt.rgba(0, 0, 0, 0.1)
            }

            MagicControls {
                id: controls

                y: 1
                width: parent.width
                editor: pageEditor
                cornerRadius: view.cornerRadius
            }
        }
    }

    Shortcut {
        sequences: [StandardKey.ZoomIn, "Ctrl+="]
        onActivated: pageEditor.zoomIn()
    }

    Shortcut {
        sequences: [StandardKey.ZoomOut]
        onActivated: pageEditor.zoomOut()
    }

    Shortcut {
        sequences: ["Ctrl+0"]
        onActivated: pageEditor.fit()
    }
}
