import QtQuick
import Velmor.Controls
import Velmor.Preview

// A field for a text to find, how many places there are, and the ways from one to the next.
FocusScope {
    id: bar

    required property TextSearch search

    // The most room there is.
    property real maximumWidth: 400

    // Escape or the last button.
    signal closed

    // Shows the bar, ready for typing.
    function open() {
        visible = true;
        field.forceActiveFocus(Qt.ShortcutFocusReason);
        field.selectAll();
        search.text = field.text;
    }

    implicitWidth: row.implicitWidth + 12
    implicitHeight: row.implicitHeight + 12
    onClosed: search.text = ""
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Find")
    Keys.onEscapePressed: closed()

    RoundedBox {
        anchors.fill: parent
        radius: 8
        color: "#FFFFFF"
        lineWidth: 1
        lineColor: Qt.rgba(0, 0, 0, 0.14)
    }

    // Nothing here is for the pages below.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onWheel: event => event.accepted = true
    }

    Row {
        id: row

        x: 6
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        TextBox {
            id: field

            width: Math.max(60, Math.min(180, bar.maximumWidth - buttons.width - places.width - 16))
            focus: true
            placeholderText: qsTr("Find in document")
            onTextChanged: if (bar.visible)
                bar.search.text = text
            Keys.onReturnPressed: event => step(event)
            Keys.onEnterPressed: event => step(event)

            function step(event: KeyEvent) {
                if (event.modifiers & Qt.ShiftModifier)
                    bar.search.previous();
                else
                    bar.search.next();
            }
        }

        Text {
            id: places

            width: 70
            height: field.height
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 9
            font.family: Theme.fontFamily
            font.pixelSize: 12
            color: Theme.textSecondary
            text: {
                if (field.text.trim() === "")
                    return "";
                if (bar.search.count > 0)
                    return qsTr("%1 of %2").arg(bar.search.current).arg(bar.search.count);
                return bar.search.searching ? "…" : qsTr("Not found");
            }
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Row {
            id: buttons

            PlainButton {
                width: 24
                height: field.height
                symbol: "chevron-up"
                hint: qsTr("Previous match")
                enabled: bar.search.count > 0
                onClicked: bar.search.previous()
            }

            PlainButton {
                width: 24
                height: field.height
                symbol: "chevron-down"
                hint: qsTr("Next match")
                enabled: bar.search.count > 0
                onClicked: bar.search.next()
            }

            PlainButton {
                width: 24
                height: field.height
                symbol: "close"
                symbolSize: 11
                hint: qsTr("Close")
                onClicked: bar.closed()
            }
        }
    }
}
