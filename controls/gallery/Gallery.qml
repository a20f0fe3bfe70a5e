import QtQuick
import QtQuick.Window
import Velmor.Controls

// All controls in all their states on one page, for those who work on them.
Window {
    id: gallery

    width: page.width
    height: page.height
    title: "Velmor controls"
    visible: true

    BackgroundGradient {
        anchors.fill: parent
    }

    Column {
        id: page

        padding: 32
        spacing: 24

        ButtonSamples {}

        ChoiceSamples {}

        PaneSamples {}

        IconSamples {}
    }
}
