import QtQuick
import QtTest
import Velmor.Controls

// What the keyboard and the pointer do to the controls.
Item {
    id: stage

    width: 400
    height: 300

    Column {
        PillButton {
            id: pill

            property int clicks: 0

            text: "Save"
            onClicked: ++clicks
        }

        BinaryToggle {
            id: toggle

            onSwitched: on => isOn = on
        }

        SegmentedPill {
            id: segments

            options: [
                {
                    label: "One",
                    value: 1
                },
                {
                    label: "Two",
                    value: 2
                },
                {
                    label: "Three",
                    value: 3
                }
            ]
            selection: 2
            onPicked: value => selection = value
        }

        CheckMark {
            id: mark

            text: "Include"
        }

        TextBox {
            id: box
        }

        PlainButton {
            id: tipped

            text: "Anchor"
            onClicked: popover.open()

            Popover {
                id: popover

                enter: null
                exit: null

                contentItem: TextBox {}
            }
        }
    }

    Item {
        id: moved

        Spring on x {
            id: spring

            to: 10
            response: 0.35
            damping: 0.6
        }
    }

    TestCase {
        name: "Keyboard"
        when: windowShown

        function initTestCase() {
            Motion.reduced = true;
        }

        function segment(index) {
            for (let i = 0; i < segments.children.length; ++i) {
                if (segments.children[i].index === index)
                    return segments.children[i];
            }
            return null;
        }

        function test_tabReachesEachControlOnce() {
            pill.forceActiveFocus(Qt.TabFocusReason);
            for (const next of [toggle, segment(1), mark, box, tipped]) {
                keyClick(Qt.Key_Tab);
                verify(next.activeFocus, "next is " + next);
                verify(next.visualFocus);
            }
            keyClick(Qt.Key_Backtab);
            verify(box.activeFocus);
        }

        function test_pointerShowsNoRing_data() {
            return [{tag: "button", control: pill}, {tag: "switch", control: toggle}, {tag: "check box", control: mark}, {tag: "field", control: box}];
        }

        function test_pointerShowsNoRing(row) {
            mouseClick(row.control);
            verify(row.control.activeFocus);
            verify(!row.control.visualFocus);
        }

        function test_keysAct_data() {
            return [{tag: "Space", key: Qt.Key_Space}, {tag: "Return", key: Qt.Key_Return}, {tag: "Enter", key: Qt.Key_Enter}];
        }

        function test_keysAct(row) {
            const clicks = pill.clicks;
            pill.forceActiveFocus();
            keyClick(row.key);
            compare(pill.clicks, clicks + 1);
            const on = toggle.isOn;
            toggle.forceActiveFocus();
            keyClick(row.key);
            compare(toggle.isOn, !on);
            const checked = mark.checked;
            mark.forceActiveFocus();
            keyClick(row.key);
            compare(mark.checked, !checked);
        }

        function test_arrowsPickTheSegmentBeside() {
            segments.selection = 2;
            segment(1).forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Right);
            compare(segments.selection, 3);
            verify(segment(2).visualFocus);
            keyClick(Qt.Key_Right);
            compare(segments.selection, 3);
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Left);
            compare(segments.selection, 1);
            mouseClick(segment(1));
            compare(segments.selection, 2);
        }

        function test_popoverPointsAtItsParentAndCloses() {
            mouseClick(tipped);
            tryVerify(() => popover.opened);
            compare(popover.placement.above, false);
            compare(popover.placement.x + popover.placement.arrow, Math.max(20 + popover.placement.x, tipped.width / 2));
            verify(popover.x + tipped.x >= 8);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !popover.visible);
            mouseClick(tipped);
            tryVerify(() => popover.opened);
            mouseClick(stage, 390, 290);
            tryVerify(() => !popover.visible);
        }

        function test_springJumpsWithReducedMotion() {
            Motion.reduced = true;
            spring.to = 50;
            compare(moved.x, 50);
            Motion.reduced = false;
            spring.to = 100;
            compare(moved.x, 50);
            spring.advance(0.17);
            verify(moved.x > 75, "on the way: " + moved.x);
            const before = moved.x;
            spring.to = 0;
            compare(moved.x, before);
            spring.advance(10);
            compare(moved.x, 0);
            verify(!spring.running);
            Motion.reduced = true;
        }
    }
}
