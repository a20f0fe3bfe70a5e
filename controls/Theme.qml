pragma Singleton
import QtQuick
import Velmor.Controls

// The application's colours, sizes and curves. Sizes are logical pixels.
QtObject {
    readonly property color accent: "#7A5AF8"
    readonly property color accentPressed: "#6846E6"
    readonly property color textPrimary: "#1E1B2E"
    readonly property color textSecondary: "#8A8699"
    readonly property color success: "#2FB67A"
    readonly property color danger: "#E2575A"
    readonly property color gradientTop: "#EFEAFF"
    readonly property color gradientBottom: "#E6F5EE"
    readonly property int cardRadius: 22

    // The ground of a row of segments, and of what the pointer is over.
    readonly property color track: "#F1EFF7"
    // A switch that is off.
    readonly property color switchOff: "#D1D1D6"
    readonly property color cardShadow: "#503CA0"
    // A frosted pane over whatever lies below.
    readonly property color frost: "#99FFFFFF"
    // What can't be used now is shown at this opacity.
    readonly property real disabledOpacity: 0.35

    // For `easing { type: Easing.BezierSpline; bezierCurve: … }`.
    readonly property var easeOut: [0, 0, 0.58, 1, 1, 1]
    readonly property var easeInOut: [0.42, 0, 0.58, 1, 1, 1]

    readonly property string fontFamily: Application.font.family

    // The value for `font.pointSize` that makes text of a size between two whole pixels, which
    // `font.pixelSize` doesn't take.
    function points(pixels: real): real {
        return TextScale.points(pixels);
    }
}
