import QtQuick
import Velmor.Controls

// A titled row of samples in the gallery.
Column {
    id: sample

    required property string title
    default property alias samples: row.data

    spacing: 8

    Text {
        text: sample.title
        font.family: Theme.fontFamily
        font.pixelSize: 11
        color: Theme.textSecondary
    }

    Row {
        id: row

        spacing: 20
    }
}
