import QtQuick
import Velmor.Controls
import Velmor.Browser

// What can be done with the scans, in one row. Tools that don't apply aren't there; none is ever
// disabled.
Item {
    id: bar

    required property ScansBrowser browser
    // Of the sheet whose right end this lies on.
    property real cornerRadius: 0

    // Room for all tools, so that none moves the others' limits when it comes or goes.
    implicitWidth: {
        let width = 2 * row.x + deleteTool.width;
        for (let i = 0; i < row.children.length; ++i)
            width += row.children[i].width + row.spacing;
        return width;
    }
    implicitHeight: 45

    Item {
        anchors.fill: parent
        clip: true

        RoundedBox {
            anchors.fill: parent
            anchors.leftMargin: -radius
            anchors.bottomMargin: -radius
            radius: bar.cornerRadius
            color: Theme.frost
        }
    }

    Row {
        id: row

        x: 10
        y: 5
        spacing: 2

        ToolButton {
            objectName: "rotateTool"
            label: qsTr("Rotate")
            keyHint: "R"
            picture: "rotate-right"
            onClicked: bar.browser.rotate()
        }

        ToolButton {
            objectName: "cropTool"
            label: qsTr("Crop")
            keyHint: "C"
            picture: "crop"
            onClicked: bar.browser.startCrop()
        }

        ToolButton {
            objectName: "magicTool"
            label: qsTr("Magic")
            keyHint: "W"
            picture: "magic"
            onClicked: bar.browser.startMagic()
        }

        ToolButton {
            objectName: "repeatTool"
            visible: bar.browser.hasMagicPreset
            label: qsTr("Repeat")
            help: qsTr("Apply saved magic to selection")
            picture: "repeat"
            onClicked: bar.browser.applyMagicPreset()
        }

        ToolDivider {}

        ToolButton {
            objectName: "mergeTool"
            label: qsTr("Merge")
            keyHint: "M"
            picture: "merge"
            onClicked: bar.browser.merge()
        }

        ToolButton {
            objectName: "splitTool"
            label: qsTr("Split")
            keyHint: "S"
            picture: "split"
            onClicked: bar.browser.split()
        }

        ToolDivider {
            visible: bar.browser.canUndo
        }

        ToolButton {
            objectName: "undoTool"
            visible: bar.browser.canUndo
            label: qsTr("Undo")
            keyHint: qsTr("Ctrl+Z")
            picture: "undo"
            onClicked: bar.browser.undoEdit()
        }
    }

    ToolButton {
        id: deleteTool

        objectName: "deleteTool"
        anchors.right: parent.right
        anchors.rightMargin: 10
        y: 5
        label: qsTr("Delete")
        keyHint: "⌫"
        picture: "delete"
        onClicked: bar.browser.deleteSelected()
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Qt.rgba(0, 0, 0, 0.1)
    }
}
