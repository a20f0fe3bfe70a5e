import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// A small pane that belongs to its parent and points at it. Esc and a click elsewhere close it.
//
// `edge` is the side of the parent on which it stands: Qt.BottomEdge or Qt.TopEdge. It takes the
// other side where it has no room, and moves aside to stay within what its window shows.
T.Popup {
    id: popover

    property int edge: Qt.BottomEdge
    property color color: "#FFFFFF"

    readonly property real arrowHeight: 7
    // To the bounds at the left and right: the shadow is faint enough there to be cut off.
    readonly property real edgeRoom: 20
    // Where it stands now, in its parent's coordinates.
    readonly property alias placement: place

    QtObject {
        id: place

        property bool above: false
        property real x: 0
        // Middle of the arrow, from the popover's left edge.
        property real arrow: 0
    }

    function settle() {
        const area = parent ? ShownArea.around(parent) : null;
        if (!area)
            return;
        const anchor = parent.mapToItem(area, 0, 0);
        const roomAbove = anchor.y - height;
        const roomBelow = area.height - anchor.y - parent.height - height;
        place.above = edge === Qt.TopEdge ? roomAbove >= 0 || roomAbove > roomBelow : roomBelow < 0 && roomAbove > roomBelow;
        const wanted = anchor.x + (parent.width - width) / 2;
        const x = Math.max(edgeRoom, Math.min(wanted, area.width - width - edgeRoom));
        place.x = Math.round(x - anchor.x);
        place.arrow = Math.max(20, Math.min(parent.width / 2 - place.x, width - 20));
    }

    x: place.x
    y: place.above ? -height : parent ? parent.height : 0
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 14
    topInset: place.above ? 0 : arrowHeight
    bottomInset: place.above ? arrowHeight : 0
    topPadding: padding + (place.above ? 0 : arrowHeight)
    bottomPadding: padding + (place.above ? arrowHeight : 0)
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onAboutToShow: settle()
    onWidthChanged: settle()
    onHeightChanged: settle()

    background: Item {
        SoftShadow {
            anchors.fill: parent
            radius: 12
            blur: 14
            offsetY: 5
            color: Qt.rgba(0, 0, 0, 0.18)
        }

        RoundedBox {
            anchors.fill: parent
            radius: 12
            color: popover.color
        }

        ArrowHead {
            x: place.arrow - width / 2
            y: place.above ? parent.height : -height
            width: 16
            height: popover.arrowHeight
            rotation: place.above ? 180 : 0
            color: popover.color
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
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: 120
        }
    }
}
