import QtQuick
import Velmor.Controls
import Velmor.Calibration

// The automatic tuner, and the name under which the result is kept. Return in the field saves.
Item {
    id: row

    required property Calibration calibration

    implicitHeight: Math.max(tune.height, save.height)

    PillButton {
        id: tune

        objectName: "autoTune"
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Auto")
        symbol: "auto"
        symbolSize: 13
        font.pixelSize: 13
        enabled: row.calibration.hasSample
        Accessible.description: qsTr("Tune brightness and contrast by the sample")
        onClicked: row.calibration.autoTune()
    }

    TextBox {
        objectName: "presetName"
        anchors.right: save.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 150
        placeholderText: qsTr("Preset name")
        text: row.calibration.presetName
        onTextEdited: row.calibration.presetName = text
        onAccepted: row.calibration.savePreset()
    }

    PillButton {
        id: save

        objectName: "savePreset"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Save preset")
        enabled: row.calibration.canSavePreset
        onClicked: row.calibration.savePreset()
    }
}
