import QtQuick
import QtQuick.Templates as T

// A choice of one from a few, as a row of equally wide segments.
//
// `options` is a list of { label, value }. The segment whose value is `selection` is filled; none is
// if no value is. The control never changes `selection`: it asks by `picked`, and the owner decides.
// Tab goes to the selected segment, the arrow keys pick the one beside it.
T.Control {
    id: pill

    property var options: []
    property var selection
    property bool compact: false

    signal picked(var value)

    readonly property int selectedIndex: options.findIndex(option => option.value === selection)

    function pickBeside(index: int, step: int) {
        const next = segments.itemAt(index + step);
        if (!next)
            return;
        next.forceActiveFocus(Qt.TabFocusReason);
        picked(options[index + step].value);
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: compact ? 3 : 4
    spacing: compact ? 3 : 4
    font.family: Theme.fontFamily
    font.weight: Font.Medium
    Accessible.role: Accessible.Grouping

    contentItem: Item {
        // The widest segment decides, as all are equal.
        readonly property real segmentWidth: {
            let widest = 0;
            for (let i = 0; i < segments.count; ++i)
                widest = Math.max(widest, segments.itemAt(i)?.implicitWidth ?? 0);
            return widest;
        }

        implicitWidth: (segmentWidth + pill.spacing) * segments.count - pill.spacing
        implicitHeight: segments.count > 0 ? segments.itemAt(0).implicitHeight : 0

        Repeater {
            id: segments

            model: pill.options

            PlainButton {
                id: segment

                required property int index
                required property var modelData
                readonly property bool selected: index === pill.selectedIndex
                readonly property real share: (parent.width + pill.spacing) / segments.count

                x: index * share
                width: share - pill.spacing
                height: parent.height
                radius: height / 2
                verticalPadding: pill.compact ? 5 : 8
                horizontalPadding: 4
                text: modelData.label
                color: selected ? "#FFFFFF" : Theme.textSecondary
                font.pointSize: Theme.points(pill.compact ? 11.5 : 13)
                font.weight: Font.Medium
                focusPolicy: selected || (pill.selectedIndex < 0 && index === 0) ? Qt.StrongFocus : Qt.ClickFocus
                Accessible.role: Accessible.RadioButton
                Accessible.checkable: true
                Accessible.checked: selected
                Keys.onLeftPressed: pill.pickBeside(index, -1)
                Keys.onRightPressed: pill.pickBeside(index, 1)
                onClicked: pill.picked(modelData.value)

                background: Rectangle {
                    radius: height / 2
                    color: segment.selected ? Theme.accent : "transparent"
                }
            }
        }
    }

    background: Rectangle {
        radius: height / 2
        color: Theme.track
        border.pixelAligned: false
        border.width: 0.5
        border.color: Qt.rgba(1, 1, 1, 0.6)
    }
}
