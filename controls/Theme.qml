pragma Singleton
import QtQuick

// The application's colours and sizes. Sizes are logical pixels.
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
}
