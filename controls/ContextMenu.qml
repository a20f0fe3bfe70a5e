import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// A menu at the pointer or, opened by the keyboard, at its parent. Arrow keys move, Return picks, Esc
// closes. Give it `MenuEntry` items, or actions.
T.Menu {
    id: menu

    implicitWidth: Math.max(160, contentItem.implicitWidth + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 6
    padding: 5
    overlap: 1
    delegate: MenuEntry {}

    contentItem: ListView {
        implicitWidth: {
            let widest = 0;
            for (let i = 0; i < menu.count; ++i)
                widest = Math.max(widest, menu.itemAt(i).implicitWidth);
            return widest;
        }
        implicitHeight: contentHeight
        model: menu.contentModel
        currentIndex: menu.currentIndex
        interactive: false
    }

    background: Item {
        SoftShadow {
            anchors.fill: parent
            radius: 10
            blur: 12
            offsetY: 5
            color: Qt.rgba(0, 0, 0, 0.2)
        }

        RoundedBox {
            anchors.fill: parent
            radius: 10
            color: "#FFFFFF"
            lineWidth: 1
            lineColor: Qt.rgba(0, 0, 0, 0.08)
        }
    }

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 80
        }
    }
}
