import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// A tool tip: the explaining text that appears when the pointer rests on a control. It stands below
// that, and moves aside to stay within what its window shows.
T.ToolTip {
    id: hint

    function settle() {
        const area = parent ? ShownArea.around(parent) : null;
        if (!area)
            return;
        const left = parent.mapToItem(area, 0, 0).x;
        const wanted = (parent.width - width) / 2;
        x = Math.round(Math.max(margins - left, Math.min(wanted, area.width - margins - width - left)));
    }

    y: parent ? parent.height + 6 : 0
    implicitWidth: Math.min(contentItem.implicitWidth + leftPadding + rightPadding, 300)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 6
    horizontalPadding: 8
    verticalPadding: 5
    delay: 700
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onAboutToShow: settle()
    onWidthChanged: settle()

    contentItem: Text {
        text: hint.text
        font.family: Theme.fontFamily
        font.pixelSize: 11
        color: Theme.textPrimary
        wrapMode: Text.Wrap
    }

    background: Item {
        SoftShadow {
            anchors.fill: parent
            radius: 6
            blur: 5
            offsetY: 2
            color: Qt.rgba(0, 0, 0, 0.2)
        }

        RoundedBox {
            anchors.fill: parent
            radius: 6
            color: "#FFFFFF"
            lineWidth: 1
            lineColor: Qt.rgba(0, 0, 0, 0.08)
        }
    }

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 120
        }
    }
}
