import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// The sign that the last scan failed, with the reason as its tool tip. There while `text` is.
T.Control {
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

    padding: 4
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    enabled: shown
    scale: size.value
    opacity: Math.min(1, size.value)
    visible: size.value > 0.001
    Accessible.role: Accessible.AlertMessage
    Accessible.name: reason

    Spring {
        id: size

        to: sign.shown ? 1 : 0
        response: 0.4
        damping: 0.75
    }

    contentItem: Icon {
        name: "warning"
        size: 14
        weight: Font.DemiBold
        color: "#E09A3C"
    }

    FocusRing {
        shown: sign.visualFocus
    }

    Hint {
        text: sign.reason
        visible: sign.shown && (sign.hovered || sign.visualFocus)
    }
}
