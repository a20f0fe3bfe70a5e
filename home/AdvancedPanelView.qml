import QtQuick
import QtQuick.Dialogs
import Velmor.Controls
import Velmor.Home

// All scan settings at once, in three sections. A change takes effect at once; the footer keeps the
// present state as a preset.
Column {
    id: view

    required property AppModel model

    function options(titles: list<string>): var {
        return titles.map((title, index) => ({
                    label: title,
                    value: index
                }));
    }

    spacing: 10

    AdvancedPanel {
        id: panel

        model: view.model
    }

    SectionLabel {
        text: qsTr("Scan")
    }

    SegmentedPill {
        objectName: "quality"
        width: parent.width
        compact: true
        options: view.options(panel.qualityTitles)
        selection: panel.quality
        Accessible.name: qsTr("Quality")
        onPicked: value => panel.quality = value
    }

    SegmentedPill {
        objectName: "colorMode"
        width: parent.width
        compact: true
        options: view.options(panel.colorModeTitles)
        selection: panel.colorMode
        Accessible.name: qsTr("Colour")
        onPicked: value => panel.colorMode = value
    }

    ToggleRow {
        objectName: "batch"
        width: parent.width
        title: qsTr("Batch")
        subtitle: qsTr("Wait for paper and keep scanning until Stop")
        isOn: panel.batch
        onSwitched: on => panel.batch = on
    }

    SectionDivider {
        width: parent.width
    }

    SectionLabel {
        text: qsTr("Enhance")
    }

    EnhanceSteps {
        width: parent.width
        panel: panel
    }

    SectionDivider {
        width: parent.width
    }

    SectionLabel {
        text: qsTr("Output")
    }

    ToggleRow {
        objectName: "ocr"
        width: parent.width
        title: qsTr("Searchable text")
        subtitle: qsTr("Recognize text so the PDF is searchable")
        isOn: panel.ocr
        onSwitched: on => panel.ocr = on
    }

    TitledRow {
        width: parent.width
        title: qsTr("Save to")
        subtitle: panel.folderLabel
        subtitleElide: Text.ElideMiddle

        PlainButton {
            objectName: "changeFolder"
            text: qsTr("Change…")
            font.pixelSize: 12
            color: Theme.accent
            onClicked: folderChoice.open()
        }
    }

    // Of the footer's line, which is dim without changes to keep, this part never is.
    Item {
        width: parent.width
        height: footer.implicitHeight

        PlainButton {
            objectName: "calibrate"
            anchors.bottom: parent.bottom
            verticalPadding: 6
            text: qsTr("Calibrate…")
            hint: qsTr("Tune brightness and contrast on a sample page")
            font.pixelSize: 12
            color: Theme.accent
            onClicked: panel.calibrate()
        }

        PresetFooter {
            id: footer

            anchors.fill: parent
            panel: panel
        }
    }

    FolderDialog {
        id: folderChoice

        currentFolder: panel.folder
        acceptLabel: qsTr("Choose")
        onAccepted: panel.chooseFolder(selectedFolder)
    }
}
