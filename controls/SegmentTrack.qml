import QtQuick
import Velmor.Controls

// The ground of a `SegmentedPill`, with all that its segments need to know.
RoundedBox {
    id: track

    property var options: []
    property var selection
    property bool compact: false
    readonly property int selectedIndex: options.findIndex(option => option.value === selection)
    readonly property int gap: compact ? 3 : 4
    // From one segment's left edge to the next one's. The ground is wider by one gap.
    readonly property real step: (width - gap) / Math.max(1, options.length)

    // The segment that the keyboard asked for; the focus goes with it.
    property int wantedIndex: -1

    signal picked(var value)

    function pickByKey(index: int) {
        if (index < 0 || index >= options.length)
            return;
        wantedIndex = index;
        picked(options[index].value);
    }

    radius: height / 2
    color: Theme.track
    lineWidth: 0.5
    lineColor: Qt.rgba(1, 1, 1, 0.6)
    Accessible.role: Accessible.Grouping
}
