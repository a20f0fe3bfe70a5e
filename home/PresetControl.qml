import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Velmor.Controls
import Velmor.Home

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// The tab bar and, below it, the bubble that shows what a tab sets. For those who use the keyboard,
// having the focus here is what the pointer's presence is for others.
Column {
    id: control

    required property BaseWidget base

    readonly property Item tabInForce: tabs.count > 0 ? tabNamed(base.tab) : null
    readonly property Item shownTab: tabs.count > 0 ? tabNamed(base.displayTab) : null

    // Whether the keyboard's focus is in here. The window tells of both ends of its way at once: on the
    // way from a tab to a chip the bubble stays.
    readonly property bool keyboardInside: {
        const focused = Window.activeFocusItem as T.AbstractButton;
        let item = focused as Item;
        while (item && item !== control)
            item = item.parent;
        return item !== null && focused.visualFocus;
    }

    function tabNamed(title: string): Item {
        for (let i = 0; i < tabs.count; ++i) {
            const tab = tabs.itemAt(i);
            if (tab && tab.title === title)
                return tab;
        }
        return null;
    }

    Binding {
        target: control.base
        property: "hoveringTabs"
        value: pointer.hovered || control.keyboardInside
    }

    Item {
        objectName: "pill"
        width: parent.width
        height: row.height
        Accessible.role: Accessible.PageTabList
        Accessible.name: qsTr("Presets")

        RoundedBox {
            objectName: "pillTrack"
            anchors.fill: parent
            radius: height / 2
            color: Theme.track
        }

        // One capsule for all tabs: it slides from one to the next.
        RoundedBox {
            objectName: "capsule"
            x: left.value
            y: row.y + 4
            width: breadth.value
            height: row.height - 8
            visible: control.tabInForce
            radius: height / 2
            color: Theme.accent

            Spring {
                id: left

                to: row.x + (control.tabInForce?.x ?? 0)
                response: 0.32
                damping: 0.82
                animated: control.tabInForce?.settled ?? false
            }

            Spring {
                id: breadth

                to: control.tabInForce?.width ?? 0
                response: 0.32
                damping: 0.82
                animated: left.animated
            }
        }

        Row {
            id: row

            anchors.horizontalCenter: parent.horizontalCenter
            padding: 4
            spacing: 2

            Repeater {
                id: tabs

                model: control.base.tabItems

                TabButton {
                    required property string modelData

                    base: control.base
                    title: modelData
                }
            }

            HoverHandler {
                id: pointer
            }
        }
    }

    SettingsBubble {
        objectName: "settingsBubble"
        width: parent.width
        base: control.base
        arrowAt: control.shownTab ? row.x + control.shownTab.x + control.shownTab.width / 2 : width / 2
    }
}
