import QtQuick

// Between two groups of tools.
Rectangle {
    width: 1
    height: 16
    color: Qt.rgba(0, 0, 0, 0.12)
}
