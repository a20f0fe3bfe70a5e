import QtQuick
import Velmor.Controls

// A plain window of the application that says something: as large as that is, and closed with its
// button, with Escape, Ctrl+W or by the desktop.
Window {
    id: dialog

    default property alias content: column.data
    property alias contentWidth: column.width
    readonly property int padding: 24

    flags: Qt.Dialog
    color: "#FFFFFF"
    width: column.width + 2 * padding
    height: column.implicitHeight + 2 * padding
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: dialog.close()
    }

    FocusScope {
        anchors.fill: parent
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title
        Keys.onEscapePressed: dialog.close()

        Column {
            id: column

            x: dialog.padding
            y: dialog.padding
            width: 340
            spacing: 2
        }
    }
}
