import QtQuick
import Velmor.Controls
import Velmor.Browser

// Below the grid: the size of its cells, and how many scans there are.
Item {
    id: footer

    required property ScansBrowser browser

    height: slider.height + 16

    Icon {
        id: gridSymbol

        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: "grid"
        size: 13
        color: Theme.textSecondary
    }

    ValueSlider {
        id: slider

        anchors.left: gridSymbol.right
        anchors.leftMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(120, count.x - x - 8)
        from: 90
        to: 260
        stepSize: 10
        snapMode: ValueSlider.NoSnap
        value: footer.browser.thumbSize
        hint: qsTr("Thumbnail size")
        onMoved: footer.browser.thumbSize = value
    }

    Text {
        id: count

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("%1 scans").arg(footer.browser.count)
        font.family: Theme.fontFamily
        font.pixelSize: 11
        color: Theme.textSecondary
    }
}
