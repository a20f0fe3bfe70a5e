import QtQuick
import Velmor.Controls
import Velmor.Editor

// What can be done with the page, and what to do next. One row; where that would leave the
// instruction too little room, the pills stand in a second one.
Item {
    id: bar

    required property PageEditor editor
    // Of the sheet whose right end this lies on.
    property real cornerRadius: 0

    readonly property int sidePadding: 10
    readonly property int padding: 7
    readonly property int spacing: 8
    readonly property int buttonWidth: 24
    readonly property int leastInstruction: 120
    // With room for "Fit", so that zooming doesn't move the rows.
    readonly property real toolsWidth: 3 * (buttonWidth + spacing) + zoomReadout.width + (hasPages ? 2 * (buttonWidth + spacing) + pageReadout.width + 2 * spacing + 1 : 0)
    readonly property bool isOneRow: width >= 2 * sidePadding + symbol.width + leastInstruction + toolsWidth + pillsWidth + 5 * spacing + 6 + 1
    readonly property real rowHeight: isOneRow ? pills.height : 22
    readonly property bool hasPages: editor.pageCount > 1
    // The pills as they are where there is room. Words of other languages may take that from their
    // sides.
    readonly property int pillCount: editor.isCrop ? 3 : 1
    readonly property real pillTexts: cancelPill.implicitContentWidth + (editor.isCrop ? undoPill.implicitContentWidth + applyPill.implicitContentWidth : 0)
    readonly property real pillGaps: (pillCount - 1) * spacing
    readonly property int fullPadding: 18
    readonly property real pillsWidth: pillTexts + pillCount * 2 * fullPadding + pillGaps
    readonly property int pillPadding: Math.max(6, Math.min(fullPadding, (width - 2 * sidePadding - pillGaps - pillTexts) / (2 * pillCount)))

    implicitHeight: padding + rowHeight + padding + (isOneRow ? 0 : pills.height + padding)

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

    Icon {
        id: symbol

        x: bar.sidePadding
        y: bar.padding + Math.round((bar.rowHeight - height) / 2)
        name: bar.editor.isCrop ? "crop" : "magic"
        size: 13
        color: Theme.accent
    }

    Text {
        id: instruction

        anchors.left: symbol.right
        anchors.leftMargin: bar.spacing
        anchors.right: tools.left
        anchors.rightMargin: 2 * bar.spacing + 6
        y: bar.padding + Math.round((bar.rowHeight - height) / 2)
        text: bar.editor.instruction
        elide: Text.ElideRight
        font.family: Theme.fontFamily
        font.pixelSize: 12
        color: Theme.textPrimary
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text

        HoverHandler {
            id: instructionHover
        }

        Hint {
            text: instruction.text
            visible: instruction.truncated && instructionHover.hovered
        }
    }

    Row {
        id: tools

        x: bar.width - bar.sidePadding - width - (bar.isOneRow ? bar.spacing + divider.width + bar.spacing + pills.width : 0)
        y: bar.padding + Math.round((bar.rowHeight - height) / 2)
        spacing: bar.spacing

        EditorIconButton {
            objectName: "zoomOut"
            symbol: "zoom-out"
            hint: qsTr("Zoom out")
            onClicked: bar.editor.zoomOut()
        }

        DigitsText {
            id: zoomReadout

            anchors.verticalCenter: parent.verticalCenter
            width: 38
            horizontalAlignment: Text.AlignHCenter
            text: bar.editor.zoomReadout
            font.pixelSize: 10
        }

        EditorIconButton {
            objectName: "zoomIn"
            symbol: "zoom-in"
            hint: qsTr("Zoom in (pinch or Alt-scroll)")
            onClicked: bar.editor.zoomIn()
        }

        EditorIconButton {
            objectName: "fit"
            visible: bar.editor.isZoomedIn
            symbol: "fit"
            hint: qsTr("Fit")
            onClicked: bar.editor.fit()
        }

        EditorDivider {
            visible: bar.hasPages
            anchors.verticalCenter: parent.verticalCenter
        }

        EditorIconButton {
            objectName: "previousPage"
            visible: bar.hasPages
            enabled: bar.editor.pageIndex > 0
            symbol: "chevron-left"
            hint: qsTr("Previous page")
            onClicked: bar.editor.pageIndex -= 1
        }

        DigitsText {
            id: pageReadout

            visible: bar.hasPages
            anchors.verticalCenter: parent.verticalCenter
            text: bar.editor.pageReadout
            font.pixelSize: 11
        }

        EditorIconButton {
            objectName: "nextPage"
            visible: bar.hasPages
            enabled: bar.editor.pageIndex < bar.editor.pageCount - 1
            symbol: "chevron-right"
            hint: qsTr("Next page")
            onClicked: bar.editor.pageIndex += 1
        }
    }

    EditorDivider {
        id: divider

        anchors.right: pills.left
        anchors.rightMargin: bar.spacing
        anchors.verticalCenter: pills.verticalCenter
        visible: bar.isOneRow
    }

    Row {
        id: pills

        x: bar.width - bar.sidePadding - width
        y: bar.padding + (bar.isOneRow ? 0 : bar.rowHeight + bar.padding)
        spacing: bar.spacing

        PillButton {
            id: undoPill

            objectName: "undoBox"
            horizontalPadding: bar.pillPadding
            visible: bar.editor.isCrop
            enabled: bar.editor.canRemoveLast
            text: qsTr("Undo box")
            hint: qsTr("Remove the last corner/box (⌫ / Ctrl+Z)")
            focusPolicy: Qt.TabFocus
            onClicked: bar.editor.removeLast()
        }

        PillButton {
            id: applyPill

            objectName: "applyCrop"
            horizontalPadding: bar.pillPadding
            visible: bar.editor.isCrop
            enabled: bar.editor.canApply
            filled: true
            text: qsTr("Apply")
            hint: qsTr("Apply crop (⏎)")
            focusPolicy: Qt.TabFocus
            onClicked: bar.editor.applyCrop()
        }

        PillButton {
            id: cancelPill

            objectName: "cancel"
            horizontalPadding: bar.pillPadding
            text: qsTr("Cancel")
            hint: qsTr("Close without applying (Esc)")
            focusPolicy: Qt.TabFocus
            onClicked: bar.editor.cancel()
        }
    }
}
