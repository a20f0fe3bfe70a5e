import QtQuick
import Velmor.Controls
import Velmor.Home

// The switch for all steps that improve the page and, unfolded by the chevron, one for each.
Column {
    id: steps

    required property AdvancedPanel panel

    spacing: 0

    TitledRow {
        width: parent.width
        title: qsTr("Auto-enhance")
        subtitle: qsTr("Crop · straighten · levels · clean")

        aside: ToggleButton {
            objectName: "fineTune"
            width: 20
            height: 20
            symbol: "chevron-right"
            symbolSize: 10
            color: Theme.textSecondary
            hint: qsTr("Fine-tune the enhance steps")
            rotation: 90 * Math.min(1.2, unfolding.value)
            isOn: steps.panel.showFineTune
            onClicked: steps.panel.showFineTune = !steps.panel.showFineTune
        }

        MasterToggle {
            objectName: "master"
            toggleState: steps.panel.enhanceState
            Accessible.name: qsTr("Auto-enhance")
            Accessible.description: qsTr("Crop · straighten · levels · clean")
            onClicked: steps.panel.toggleAllEnhance()
        }
    }

    Spring {
        id: unfolding

        to: steps.panel.showFineTune ? 1 : 0
        response: 0.3
        damping: 0.85
    }

    // Its height follows the spring, and what lies below with it.
    Item {
        objectName: "fineTuneSteps"
        width: parent.width
        height: Math.max(0, unfolding.value) * (list.height + list.y)
        visible: unfolding.value > 0.001
        enabled: steps.panel.showFineTune
        opacity: Math.max(0, Math.min(1, unfolding.value))

        Column {
            id: list

            x: 12
            y: 10
            width: parent.width - 12
            spacing: 10

            ToggleRow {
                width: parent.width
                title: qsTr("Auto-crop")
                isOn: steps.panel.cropEnabled
                onSwitched: on => steps.panel.cropEnabled = on
            }

            ToggleRow {
                width: parent.width
                title: qsTr("Straighten")
                isOn: steps.panel.deskewEnabled
                onSwitched: on => steps.panel.deskewEnabled = on
            }

            ToggleRow {
                width: parent.width
                title: qsTr("Clean up background")
                isOn: steps.panel.cleanEnabled
                onSwitched: on => steps.panel.cleanEnabled = on
            }

            ToggleRow {
                width: parent.width
                title: qsTr("Remove blank pages")
                isOn: steps.panel.blankRemovalEnabled
                onSwitched: on => steps.panel.blankRemovalEnabled = on
            }

            ToggleRow {
                width: parent.width
                title: qsTr("Auto brightness/contrast")
                isOn: steps.panel.autoLevelsEnabled
                onSwitched: on => steps.panel.autoLevelsEnabled = on
            }
        }
    }
}
