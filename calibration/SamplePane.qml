import QtQuick
import Velmor.Controls
import Velmor.Calibration

// One picture of the sample under its title. What else the title's line holds stands at its end.
Item {
    id: pane

    required property Calibration calibration
    property string title
    property int content: SamplePicture.Original
    property bool isAwaited: false
    default property alias aside: asideSlot.data

    Text {
        id: heading

        text: pane.title
        font.family: Theme.fontFamily
        font.pixelSize: 11
        font.weight: Font.Medium
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    Item {
        id: asideSlot

        anchors.right: parent.right
        anchors.verticalCenter: heading.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }

    RoundedBox {
        id: ground

        anchors.top: heading.bottom
        anchors.topMargin: 6
        anchors.bottom: parent.bottom
        width: parent.width
        radius: 12
        color: Theme.track

        SamplePicture {
            anchors.fill: parent
            anchors.margins: 8
            visible: !pane.isAwaited
            calibration: pane.calibration
            content: pane.content
            Accessible.role: Accessible.Graphic
            Accessible.name: pane.title
        }

        Spinner {
            objectName: pane.objectName + "Spinner"
            anchors.centerIn: parent
            width: 20
            height: 20
            running: pane.isAwaited
        }
    }
}
