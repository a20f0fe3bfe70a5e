import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// How this copy is updated, on a desktop whose software centre can't be asked.
DialogWindow {
    id: update

    required property string advice

    title: qsTr("Updates for VELMOR")

    Text {
        width: parent.width
        bottomPadding: 8
        wrapMode: Text.Wrap
        text: qsTr("There is no software centre here that could look for updates.")
        font.family: Theme.fontFamily
        font.pixelSize: 13
        font.weight: Font.DemiBold
        color: Theme.textPrimary
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    // The commands in it can be copied.
    T.TextArea {
        id: adviceText

        readonly property bool visualFocus: activeFocus && (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason)

        width: parent.width
        implicitHeight: contentHeight + topPadding + bottomPadding
        bottomPadding: 12
        readOnly: true
        selectByMouse: true
        activeFocusOnTab: true
        wrapMode: TextEdit.Wrap
        text: update.advice
        font.family: Theme.fontFamily
        font.pixelSize: 12
        color: Theme.textPrimary
        selectionColor: Theme.accent
        Accessible.role: Accessible.StaticText
        Accessible.name: text

        FocusRing {
            anchors.bottomMargin: adviceText.bottomPadding - gap
            shown: adviceText.visualFocus
            parentRadius: 4
        }
    }

    PillButton {
        anchors.horizontalCenter: parent.horizontalCenter
        filled: true
        focus: true
        text: qsTr("Close")
        onClicked: update.close()
    }
}
