import QtQuick

// Between two groups of tools.
Item {
    width: 11
    height: 34

    Rectangle {
        anchors.centerIn: parent
        width: 1
        height: 24
        color: Qt.rgba(0, 0, 0, 0.12)
    }
}
