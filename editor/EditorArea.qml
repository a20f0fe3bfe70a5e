import QtQuick
import Velmor.Controls
import Velmor.Editor

// The page, what is drawn on it, and what the pointer and the keys do there.
FocusItem {
    id: area

    required property PageEditor editor
    // Of the sheet whose lower right corner this lies on.
    property real cornerRadius: 0
    // Milliseconds for which the pill of a proposal lets presses through to the page: who was about
    // to click there gets the corner.
    property int pillDelay: 400
    // The last thing done here was done by a key.
    property bool usesKeys: false

    clip: true
    onWidthChanged: editor.viewSize = Qt.size(width, height)
    onHeightChanged: editor.viewSize = Qt.size(width, height)
    Accessible.role: Accessible.Graphic
    Accessible.name: editor.currentCornerName || qsTr("Page %1").arg(editor.pageIndex + 1)
    Accessible.description: editor.currentCornerPlace || editor.hint
    Accessible.focusable: true
    Keys.onPressed: event => {
        event.accepted = editor.handleAreaKey(event.key, event.modifiers);
        usesKeys = usesKeys || event.accepted;
    }
    onVisualFocusChanged: usesKeys = visualFocus

    NoWindowDrag {
        anchors.fill: parent
    }

    ScrollZoomCatcher {
        anchors.fill: parent
        onPan: delta => area.editor.applyPan(delta)
        onZoom: (factor, anchor) => area.editor.applyZoom(factor, anchor)
    }

    RoundedBox {
        anchors.fill: parent
        anchors.leftMargin: -radius
        anchors.topMargin: -radius
        radius: area.cornerRadius
        color: Theme.track
    }

    // It turns on over a page that won't come; why that is, is told to screen readers alone.
    Spinner {
        objectName: "pageSpinner"
        anchors.centerIn: parent
        running: !area.editor.hasImage && !area.editor.busy
    }

    PageImage {
        anchors.fill: parent
        editor: area.editor
        cornerRadius: area.cornerRadius
    }

    CropOverlay {
        anchors.fill: parent
        visible: area.editor.isCrop && area.editor.hasImage
        editor: area.editor
        color: Theme.accent
        showsFocus: area.activeFocus && area.usesKeys
    }

    InteractionLayer {
        objectName: "interactionLayer"
        anchors.fill: parent
        visible: area.editor.hasImage
        cursorShape: area.editor.isMagic ? Qt.CrossCursor : Qt.ArrowCursor
        onDragged: (start, location) => {
            area.forceActiveFocus(Qt.MouseFocusReason);
            area.usesKeys = false;
            area.editor.dragChanged(start, location);
        }
        onEnded: (start, location) => area.editor.dragEnded(location)
        onCanceled: area.editor.dragCancelled()
        onHovered: location => area.editor.hover(location)
        onHoverEnded: area.editor.hoverLeft()
        onPinched: (factor, anchor, movement) => {
            area.editor.applyPan(movement);
            area.editor.applyZoom(factor, anchor);
        }
    }

    LoupeOverlay {
        anchors.fill: parent
        editor: area.editor
    }

    FocusRing {
        anchors.margins: 3
        shown: area.visualFocus && area.usesKeys
        parentRadius: 2
    }

    RoundedBox {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 14
        visible: area.editor.hasProposal
        width: proposalPill.width
        height: proposalPill.height
        radius: height / 2
        color: Qt.alpha(Theme.track, 0.92)
        lineWidth: 1
        lineColor: Qt.rgba(0, 0, 0, 0.08)

        PillButton {
            id: proposalPill

            readonly property bool isOffered: area.editor.hasProposal

            objectName: "useOutline"
            enabled: false
            disabledOpacity: 1
            horizontalPadding: 14
            verticalPadding: 6
            font.pixelSize: 12
            focusPolicy: Qt.NoFocus
            text: qsTr("Use this outline")
            hint: qsTr("Crop along the dashed line (Tab)")
            onClicked: area.editor.acceptProposal()
            onIsOfferedChanged: {
                enabled = false;
                pillTimer.running = isOffered;
            }

            Timer {
                id: pillTimer

                interval: area.pillDelay
                onTriggered: proposalPill.enabled = true
            }
        }
    }

    RoundedBox {
        anchors.centerIn: parent
        visible: area.editor.busy
        width: busySpinner.width + 40
        height: busySpinner.height + 40
        radius: 12
        color: Theme.frost
        lineWidth: 1
        lineColor: Qt.rgba(0, 0, 0, 0.08)

        Spinner {
            id: busySpinner

            anchors.centerIn: parent
            width: 32
            height: 32
            running: area.editor.busy
        }
    }
}
