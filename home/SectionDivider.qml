import QtQuick

// The line between two sections, with a little room around it.
Item {
    implicitHeight: 5

    Rectangle {
        y: 2
        width: parent.width
        height: 1
        color: Qt.rgba(0, 0, 0, 0.07)
    }
}
