import QtQuick
import Velmor.Controls

// A choice of one from a few, as a row of equally wide segments.
//
// `options` is a list of { label, value }. The segment whose value is `selection` is filled; none is
// if no value is. The control never changes `selection`: it asks by `picked`, and the owner decides.
// Tab goes to the selected segment, the arrow keys pick the one beside it. `compact` is a smaller
// form.
SegmentTrack {
    id: pill

    // As wide as the widest segment wants to be, for all of them, and as high as one.
    implicitWidth: {
        let widest = 0;
        for (let i = 0; i < segments.count; ++i)
            widest = Math.max(widest, segments.itemAt(i)?.implicitWidth ?? 0);
        return (widest + gap) * segments.count + gap;
    }
    implicitHeight: (segments.count > 0 ? segments.itemAt(0)?.implicitHeight ?? 0 : 0) + 2 * gap

    Repeater {
        id: segments

        model: pill.options

        PillSegment {}
    }
}
