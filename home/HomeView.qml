import QtQuick
import Velmor.Controls
import Velmor.Home

Item {
    id: home

    required property AppModel model

    BackgroundGradient {
        anchors.fill: parent
    }
}
