import QtQuick
import Velmor.Controls

// One choice of the `SegmentTrack` that it lies on.
ChoiceButton {
    id: segment

    required property int index
    required property var modelData
    property SegmentTrack track: null

    selected: index === track.selectedIndex
    x: track.gap + index * track.step
    y: track.gap
    width: track.step - track.gap
    height: track.height - 2 * track.gap
    radius: height / 2
    verticalPadding: track.compact ? 5 : 8
    horizontalPadding: 4
    text: modelData.label
    font.pointSize: Theme.points(track.compact ? 11.5 : 13)
    font.weight: Font.Medium
    // One stop for Tab: the selected segment, or the first where none is.
    activeFocusOnTab: activeFocus || index === Math.max(0, track.selectedIndex)
    // Kept when the parent goes, which it does before the segment.
    onParentChanged: {
        if (parent)
            track = parent as SegmentTrack;
    }
    Keys.onLeftPressed: track.pickByKey(index - 1)
    Keys.onRightPressed: track.pickByKey(index + 1)
    onClicked: track.picked(modelData.value)
    onSelectedChanged: {
        if (selected && index === track.wantedIndex)
            forceActiveFocus(Qt.TabFocusReason);
    }

    contentItem: SymbolText {
        text: segment.text
        font: segment.font
        color: segment.selected ? "#FFFFFF" : Theme.textSecondary
    }

    background: RoundedBox {
        radius: height / 2
        color: segment.selected ? Theme.accent : "transparent"
    }
}
