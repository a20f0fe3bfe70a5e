import QtQuick
import Velmor.Controls
import Velmor.Editor

// The levels of magic mode: the two points, the softness, and what is done with them.
Item {
    id: panel

    required property PageEditor editor
    // Of the sheet whose lower right corner this lies on.
    property real cornerRadius: 0

    readonly property int spacing: 10

    component RowLabel: Text {
        width: 52
        // Longer in other languages.
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 8
        font.family: Theme.fontFamily
        font.pixelSize: 11
        font.weight: Font.Medium
        color: Theme.textSecondary
    }

    component EndLabel: Text {
        font.family: Theme.fontFamily
        font.pixelSize: 9
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    component Readout: DigitsText {
        width: 52
        horizontalAlignment: Text.AlignRight
        font.pixelSize: 10
    }

    implicitHeight: rows.height + 20

    NoWindowDrag {
        anchors.fill: parent
    }

    Item {
        anchors.fill: parent
        clip: true

        RoundedBox {
            anchors.fill: parent
            anchors.leftMargin: -radius
            anchors.topMargin: -radius
            radius: panel.cornerRadius
            color: Theme.frost
        }
    }

    Column {
        id: rows

        x: 12
        y: 10
        width: panel.width - 24
        spacing: panel.spacing

        Row {
            spacing: panel.spacing

            RowLabel {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Levels")
            }

            LevelsRangeSlider {
                objectName: "levels"
                width: rows.width - 2 * (52 + panel.spacing)
                editor: panel.editor
            }

            Readout {
                anchors.verticalCenter: parent.verticalCenter
                text: panel.editor.levelsReadout
            }
        }

        Row {
            spacing: panel.spacing

            RowLabel {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Softness")
            }

            EndLabel {
                id: crisp

                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("crisp")
            }

            ValueSlider {
                objectName: "softness"
                width: rows.width - 2 * (52 + panel.spacing) - crisp.width - soft.width - 2 * panel.spacing
                focusPolicy: Qt.TabFocus
                hint: qsTr("Softness")
                stepSize: 0.05
                value: panel.editor.softness
                // Also when a screen reader sets it, which isn't a move.
                onValueChanged: panel.editor.softness = value
                Accessible.description: panel.editor.gammaReadout
            }

            EndLabel {
                id: soft

                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("soft")
            }

            Readout {
                anchors.verticalCenter: parent.verticalCenter
                text: panel.editor.gammaReadout
            }
        }

        Item {
            width: rows.width
            height: applyPill.height

            Row {
                id: leftPills

                spacing: panel.spacing

                PillButton {
                    objectName: "auto"
                    text: qsTr("Auto")
                    hint: qsTr("Aggressive auto-adjust for best readability")
                    focusPolicy: Qt.TabFocus
                    onClicked: panel.editor.autoSet()
                }

                PillButton {
                    objectName: "reset"
                    enabled: panel.editor.magicTouched
                    text: qsTr("Reset")
                    hint: qsTr("Back to the unmodified page (Ctrl+Z)")
                    focusPolicy: Qt.TabFocus
                    onClicked: panel.editor.resetMagic()
                }
            }

            Text {
                anchors.left: leftPills.right
                anchors.right: applyPill.left
                anchors.leftMargin: panel.spacing
                anchors.rightMargin: panel.spacing
                anchors.verticalCenter: parent.verticalCenter
                horizontalAlignment: Text.AlignHCenter
                elide: Text.ElideRight
                text: qsTr("click to set · black then white")
                font.family: Theme.fontFamily
                font.pixelSize: 10
                color: Theme.textSecondary
            }

            PillButton {
                id: applyPill

                objectName: "applyMagic"
                anchors.right: parent.right
                enabled: panel.editor.canApply
                filled: true
                text: qsTr("Apply")
                hint: qsTr("Apply to this page (⏎)")
                focusPolicy: Qt.TabFocus
                onClicked: panel.editor.applyMagic()
            }
        }
    }
}
