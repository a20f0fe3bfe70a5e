import QtQuick

// Behind what a press mustn't move the window by.
MouseArea {
    acceptedButtons: Qt.LeftButton
}
