import QtQuick
import Velmor.Controls

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// The user's presets, one button for each, in as many lines as they take.
Flow {
    id: flow

    // A list of texts.
    required property var names

    signal picked(int place)

    spacing: 8
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Presets")

    Repeater {
        model: flow.names

        PillButton {
            id: pill

            required property int index
            required property string modelData

            text: shortened.elidedText
            Accessible.name: modelData
            onClicked: flow.picked(index)

            TextMetrics {
                id: shortened

                text: pill.modelData
                font: pill.font
                elide: Text.ElideRight
                elideWidth: flow.width - pill.leftPadding - pill.rightPadding
            }
        }
    }
}
