import QtQuick
import QtQuick.Window

// The application's picture, 30 points square.
Image {
    width: 30
    height: 30
    source: "qrc:/velmor/brand/velmor.svg"
    sourceSize: Qt.size(30, 30)
    fillMode: Image.PreserveAspectFit
    Accessible.ignored: true
}
