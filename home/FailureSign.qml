import QtQuick
import Velmor.Controls

// The sign that the last scan failed, with the reason as its tool tip. There while `text` is.
Item {
    id: sign

    property string text

    // Kept while the sign leaves.
    property string reason

    readonly property bool shown: text !== ""

    // Whether `shown` has followed by now isn't certain.
    onTextChanged: {
        if (text !== "")
            reason = text;
    }

    implicitWidth: icon.width + 8
    implicitHeight: icon.height + 8
    enabled: shown
    scale: size.value
    opacity: Math.min(1, size.value)
    visible: size.value > 0.001
    // The pointer doesn't give it the focus, so the ring needs no other condition.
    activeFocusOnTab: true
    Accessible.role: Accessible.AlertMessage
    Accessible.name: reason
    Accessible.focusable: true

    Spring {
        id: size

        to: sign.shown ? 1 : 0
        response: 0.4
        damping: 0.75
    }

    Icon {
        id: icon

        anchors.centerIn: parent
        name: "warning"
        size: 14
        weight: Font.DemiBold
        color: "#E09A3C"
    }

    FocusRing {
        shown: sign.activeFocus
    }

    HoverHandler {
        id: pointer
    }

    Hint {
        text: sign.reason
        visible: sign.shown && (pointer.hovered || sign.activeFocus)
    }
}
