import QtQuick
import Velmor.Controls
import Velmor.Calibration

// Tunes brightness and contrast on a sample page, which is shown as it is and as it becomes.
FocusScope {
    id: view

    required property Calibration calibration

    function options(titles: list<string>): var {
        return titles.map((title, index) => ({
                    label: title,
                    value: index
                }));
    }

    implicitWidth: 620
    implicitHeight: stack.height
    Accessible.role: Accessible.Dialog
    Accessible.name: title.text
    Keys.onEscapePressed: calibration.finish()

    Column {
        id: stack

        width: parent.width
        padding: 22
        spacing: 16

        readonly property real innerWidth: width - 2 * padding

        Item {
            width: stack.innerWidth
            height: done.height

            Text {
                id: title

                objectName: "title"
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Calibrate")
                font.family: Theme.fontFamily
                font.pixelSize: 16
                font.weight: Font.DemiBold
                color: Theme.textPrimary
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }

            Text {
                objectName: "advice"
                anchors.left: title.right
                anchors.leftMargin: 8
                anchors.right: done.left
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("adjust until it's readable, then Save preset")
                elide: Text.ElideRight
                font.family: Theme.fontFamily
                font.pixelSize: 12
                color: Theme.textSecondary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            PillButton {
                id: done

                objectName: "done"
                anchors.right: parent.right
                filled: true
                text: qsTr("Done")
                onClicked: view.calibration.finish()
            }
        }

        SampleArea {
            objectName: "sampleArea"
            width: stack.innerWidth
            height: 340
            calibration: view.calibration
        }

        SegmentedPill {
            objectName: "colorMode"
            width: stack.innerWidth
            options: view.options(view.calibration.colorModeTitles)
            selection: view.calibration.colorMode
            Accessible.name: qsTr("Colour")
            onPicked: value => view.calibration.colorMode = value
        }

        ToneRow {
            objectName: "brightness"
            width: stack.innerWidth
            label: qsTr("Brightness")
            value: view.calibration.brightness
            readout: view.calibration.readout(value)
            focus: true
            onMoved: position => view.calibration.brightness = position
        }

        ToneRow {
            objectName: "contrast"
            width: stack.innerWidth
            label: qsTr("Contrast")
            value: view.calibration.contrast
            readout: view.calibration.readout(value)
            onMoved: position => view.calibration.contrast = position
        }

        ActionRow {
            width: stack.innerWidth
            calibration: view.calibration
        }

        Text {
            objectName: "presetsLabel"
            visible: presets.visible
            text: qsTr("PRESETS")
            font.family: Theme.fontFamily
            font.pixelSize: 11
            font.weight: Font.Medium
            font.letterSpacing: 0.5
            color: Theme.textSecondary
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        PresetPills {
            id: presets

            objectName: "presets"
            width: stack.innerWidth
            visible: view.calibration.presetNames.length > 0
            names: view.calibration.presetNames
            onPicked: place => view.calibration.applyPreset(place)
        }
    }
}
