import QtQuick
import Velmor.Controls
import Velmor.Calibration

// The sample as it is beside what becomes of it; without one, what to do about that.
Item {
    id: area

    required property Calibration calibration

    Row {
        anchors.fill: parent
        spacing: 12
        visible: area.calibration.hasSample

        SamplePane {
            objectName: "original"
            width: (parent.width - parent.spacing) / 2
            height: parent.height
            title: qsTr("Original")
            calibration: area.calibration
            content: SamplePicture.Original

            PlainButton {
                objectName: "scanAgain"
                text: qsTr("Scan again")
                font.pixelSize: 11
                color: Theme.accent
                enabled: !area.calibration.isBusy
                onClicked: area.calibration.scanSample()
            }
        }

        SamplePane {
            objectName: "result"
            width: (parent.width - parent.spacing) / 2
            height: parent.height
            title: qsTr("Result")
            calibration: area.calibration
            content: SamplePicture.Result
            isAwaited: !area.calibration.hasResult
        }
    }

    SamplePlaceholder {
        objectName: "placeholder"
        anchors.fill: parent
        visible: !area.calibration.hasSample
        isBusy: area.calibration.isBusy
        onScanRequested: area.calibration.scanSample()
    }

    CalibrationNote {
        id: note

        objectName: "note"
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 14
        widest: parent.width - 40
        text: area.calibration.note
        isBusy: area.calibration.isBusy
        hasFailed: area.calibration.hasFailed
    }

    Item {
        id: spoken

        objectName: "spokenNews"
        width: 1
        height: 1
        Accessible.role: Accessible.Notification
        Accessible.name: area.calibration.news
        Accessible.ignored: area.calibration.news === ""
    }

    Announcer {
        item: spoken
        text: area.calibration.news
    }
}
