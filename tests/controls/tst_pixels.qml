import QtQuick
import QtQuick.Window
import QtTest
import Velmor.Controls

// Colours and places, measured in pictures of the controls. Places are logical pixels.
Item {
    id: stage

    // The test's picture of an item is as many device pixels wide as the item is logical ones: what
    // shall be in it has room in a larger item.
    readonly property real ratio: Screen.devicePixelRatio

    width: 400 * ratio
    height: 200 * ratio

    Component {
        id: pieces

        Rectangle {
            width: stage.width
            height: stage.height
            color: "#FFFFFF"
        }
    }

    TestCase {
        id: test

        name: "Pixels"
        when: windowShown

        property var picture
        readonly property real ratio: stage.ratio

        function initTestCase() {
            Motion.reduced = true;
        }

        function show(qml) {
            const ground = createTemporaryObject(pieces, stage);
            const item = Qt.createQmlObject("import QtQuick; import Velmor.Controls; " + qml, ground);
            item.x = 100;
            item.y = 60;
            waitForRendering(ground);
            picture = grabImage(ground);
            return item;
        }

        function near(x, y, color) {
            const c = picture.pixel(Math.floor((100 + x) * ratio), Math.floor((60 + y) * ratio));
            const wanted = Qt.color(color);
            const distance = Math.max(Math.abs(c.r - wanted.r), Math.abs(c.g - wanted.g), Math.abs(c.b - wanted.b));
            verify(distance < 1.6 / 255, "at %1, %2: %3 instead of %4".arg(x).arg(y).arg(c).arg(wanted));
        }

        // The first and last place on the line y, from x = 0 to `end`, that is white.
        function whiteSpan(y, end) {
            let first = -1, last = -1;
            for (let x = 0; x < end * ratio; ++x) {
                const c = picture.pixel(Math.floor(100 * ratio) + x, Math.floor((60 + y) * ratio));
                if (c.r > 0.97 && c.g > 0.97 && c.b > 0.97) {
                    first = first < 0 ? x : first;
                    last = x;
                }
            }
            return [first / ratio, (last + 1) / ratio];
        }

        function test_toggles_data() {
            return [
                {tag: "master off", qml: "MasterToggle { toggleState: ToggleState.Off }", track: "#D1D1D6", knob: 2, at: 34},
                {tag: "master partial", qml: "MasterToggle { toggleState: ToggleState.Partial }", track: "#CABDFC", knob: 10, at: 4},
                {tag: "master on", qml: "MasterToggle { toggleState: ToggleState.On }", track: "#7A5AF8", knob: 18, at: 4},
                {tag: "binary off", qml: "BinaryToggle {}", track: "#D1D1D6", knob: 2, at: 34},
                {tag: "binary on", qml: "BinaryToggle { isOn: true }", track: "#7A5AF8", knob: 18, at: 4}
            ];
        }

        function test_toggles(row) {
            const toggle = show(row.qml);
            compare(toggle.width, 38);
            compare(toggle.height, 22);
            near(row.at, 11, row.track);
            const span = whiteSpan(11, 38);
            verify(Math.abs(span[0] - row.knob) <= 1, "knob begins at " + span[0]);
            verify(Math.abs(span[1] - row.knob - 18) <= 1, "knob ends at " + span[1]);
        }

        function test_fills_data() {
            return [
                {tag: "scan button", qml: "ScanButton {}", x: 42, y: 42, color: "#7A5AF8"},
                {tag: "scan button's edge", qml: "ScanButton {}", x: 42, y: 82, color: "#7A5AF8"},
                {tag: "scan button pressed", qml: "ScanButton { down: true }", x: 42, y: 42, color: "#6846E6"},
                {tag: "filled pill", qml: "PillButton { filled: true; text: 'Save' }", x: 10, y: 18, color: "#7A5AF8"},
                {tag: "filled pill's outline is clear", qml: "PillButton { filled: true; text: 'Save' }", x: 30, y: 1.1, color: "#7A5AF8"},
                {tag: "filled pill pressed", qml: "PillButton { filled: true; down: true; text: 'Save' }", x: 10, y: 18, color: "#6846E6"},
                {tag: "pressed pill's outline is clear", qml: "PillButton { filled: true; down: true; text: 'Save' }", x: 30, y: 1.1, color: "#6846E6"},
                {tag: "pill with outline is clear", qml: "PillButton { text: 'Save' }", x: 10, y: 18, color: "#FFFFFF"},
                {tag: "gradient's top", qml: "BackgroundGradient { width: 200; height: 100 }", x: 0, y: 0, color: "#EFEAFF"},
                {tag: "gradient's middle", qml: "BackgroundGradient { width: 200; height: 100 }", x: 100, y: 50, color: "#FFFFFF"},
                {tag: "gradient across", qml: "BackgroundGradient { width: 200; height: 100 }", x: 50, y: 99, color: "#FCFBFF"},
                {tag: "gradient's bottom", qml: "BackgroundGradient { width: 200; height: 100 }", x: 199, y: 99, color: "#E6F5EE"},
                {tag: "icon", qml: "Icon { name: 'stop'; size: 40; color: '#2FB67A' }", x: 24, y: 24, color: "#2FB67A"},
                {tag: "arc's end", qml: "Arc { width: 40; height: 40; part: 0.5; thickness: 6; color: '#2FB67A' }", x: 37, y: 20, color: "#2FB67A"},
                {tag: "arc's rest", qml: "Arc { width: 40; height: 40; part: 0.5; thickness: 6; color: '#2FB67A' }", x: 2, y: 20, color: "#FFFFFF"},
                {tag: "arrow's tip", qml: "ArrowHead { width: 16; height: 8; color: '#E2575A' }", x: 8, y: 3, color: "#E2575A"},
                {tag: "beside the arrow's tip", qml: "ArrowHead { width: 16; height: 8; color: '#E2575A' }", x: 2, y: 2, color: "#FFFFFF"}
            ];
        }

        function test_fills(row) {
            show(row.qml);
            near(row.x, row.y, row.color);
        }

        function segment(pill, index) {
            for (let i = 0; i < pill.children.length; ++i) {
                if (pill.children[i].index === index)
                    return pill.children[i];
            }
            return null;
        }

        function test_segments_data() {
            return [
                {tag: "normal", compact: false, selection: 2, gap: 4, label: 13},
                {tag: "compact", compact: true, selection: 2, gap: 3, label: 11.5},
                {tag: "nothing selected", compact: true, selection: 9, gap: 3, label: 11.5}
            ];
        }

        function test_segments(row) {
            const pill = show(`SegmentedPill { width: 200; compact: ${row.compact}; selection: ${row.selection}; options: [{label: '', value: 1}, {label: '', value: 2}] }`);
            const middle = pill.height / 2;
            const second = 100 + row.gap / 2;
            near(second - 2, middle, "#F1EFF7");
            near(second + 2, middle, row.selection === 2 ? "#7A5AF8" : "#F1EFF7");
            near(200 - row.gap - 2, middle, row.selection === 2 ? "#7A5AF8" : "#F1EFF7");
            near(200 - row.gap + 1.5, middle, "#F1EFF7");
            compare(segment(pill, 1).font.pointSize.toFixed(3), Theme.points(row.label).toFixed(3));
        }

        function test_shadow_data() {
            return [{tag: "solid", hollow: false, inside: 0.5}, {tag: "hollow", hollow: true, inside: 1}];
        }

        // Half of the shadow's strength lies on its edge, whatever the scale.
        function test_shadow(row) {
            show(`SoftShadow { width: 100; height: 60; blur: 6; offsetY: 10; color: '#80000000'; hollow: ${row.hollow} }`);
            const at = (x, y) => picture.pixel(Math.floor((100 + x) * ratio), Math.floor((60 + y) * ratio)).r;
            verify(Math.abs(at(50, 70) - 0.75) < 0.03, "edge below: " + at(50, 70));
            verify(Math.abs(at(50, 40) - row.inside) < 0.01, "inside: " + at(50, 40));
            verify(at(50, 91) > 0.98, "out of reach: " + at(50, 91));
            verify(at(-10, 40) < 0.99 && at(-21, 40) > 0.98, "left");
        }
    }
}
